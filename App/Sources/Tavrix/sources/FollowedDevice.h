#pragma once

#include "device/cable/DeviceWatcher.h"
#include "model/AppModel.h"

namespace tavrix {

/// Connects a device watcher to a model: the model gets the phone that the watcher has read, learns
/// when it leaves, and displays the state of all phones. During a run the watcher reads only the
/// phone of that run. Model and watcher outlive this object; the watcher and the browser outlive
/// every run. A model is connected to at most one watcher.
class FollowedDevice {
 public:
  struct Setup {
    AppModel& model;
    DeviceWatcher& watcher;
    PhoneBrowser& browser;
    /// The name to use in place of the phone's own.
    std::optional<std::string> deviceName{};
  };

  explicit FollowedDevice(Setup setup);
  ~FollowedDevice();
  FollowedDevice(const FollowedDevice&) = delete;
  FollowedDevice& operator=(const FollowedDevice&) = delete;

 private:
  void follow(const DeviceState& state);
  void publishDevice();
  ConnectedSource sourceOf(const DeviceState::Ready& ready) const;
  void keepToRun(bool isTransferring);

  Setup setup_;
  std::string wanted_;    ///< phone that the watcher wants while no run is in progress
  std::string deviceID_;  ///< of the phone that was ready last
  DeviceWatcher::Subscription watcherSubscription_;
};

}  // namespace tavrix
