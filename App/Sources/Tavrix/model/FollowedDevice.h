#pragma once

#include "device/DeviceWatcher.h"
#include "model/AppModel.h"

namespace tavrix {

/// Lets a model follow the phone that a watcher reads, from its making until it goes. Both outlive
/// it, and the browser outlives every run that it began.
class FollowedDevice {
 public:
  FollowedDevice(AppModel& model, DeviceWatcher& watcher, PhoneBrowser& browser);

 private:
  void follow(const DeviceState& state);

  AppModel& model_;
  PhoneBrowser& browser_;
  DeviceWatcher::Subscription subscription_;
};

/// A phone as destinations remember it: by its serial number, or its identifier where it tells
/// none.
PhoneIdentity identityOf(const PhoneOnCable& phone, const std::string& name);

}  // namespace tavrix
