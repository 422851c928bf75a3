#pragma once

#include "device/DeviceWatcher.h"
#include "model/AppModel.h"

namespace tavrix {

/// Lets a model follow the phone that a watcher reads, from its making until it goes, and keeps the
/// watcher to the phone of a run while there is one. Both outlive it; the watcher and the browser
/// outlive every run that it began.
class FollowedDevice {
 public:
  struct Setup {
    AppModel& model;
    DeviceWatcher& watcher;
    PhoneBrowser& browser;
    /// What the phone is called instead of its own name.
    std::optional<std::string> deviceName{};
  };

  explicit FollowedDevice(Setup setup);

 private:
  void follow(const DeviceState& state);
  ConnectedSource sourceOf(const DeviceState::Ready& ready) const;
  void keepToRun(bool isTransferring);

  Setup setup_;
  std::string wanted_;    ///< by the watcher, where no run is under way
  std::string deviceID_;  ///< of the phone that was ready last
  DeviceWatcher::Subscription watcherSubscription_;
  AppModel::Subscription modelSubscription_;
};

/// A phone as destinations remember it: by its serial number, or its identifier where it tells
/// none.
PhoneIdentity identityOf(const PhoneOnCable& phone, const std::string& name);

}  // namespace tavrix
