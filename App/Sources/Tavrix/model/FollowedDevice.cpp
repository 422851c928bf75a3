#include "model/FollowedDevice.h"

#include "device/CameraMediaSource.h"
#include "foundation/Digest.h"

namespace tavrix {

FollowedDevice::FollowedDevice(AppModel& model, DeviceWatcher& watcher, PhoneBrowser& browser)
    : model_(model), browser_(browser) {
  subscription_ =
      watcher.subscribe({.stateChanged = [this](const DeviceState& state) { follow(state); }});
  follow(watcher.state());
}

void FollowedDevice::follow(const DeviceState& state) {
  if (const auto* const ready = state.as<DeviceState::Ready>()) {
    ConnectedSource source;
    source.deviceName = ready->deviceName;
    source.phone = identityOf(ready->phone, ready->deviceName);
    source.assets = ready->assets;
    source.unreadFolders = ready->catalogue.unreadFolders();
    source.openMedia = [&browser = browser_, deviceID = ready->phone.deviceID] {
      return std::make_unique<CameraMediaSource>(
          CameraMediaSource::Setup{.browser = browser, .deviceID = deviceID});
    };
    model_.sourceReady(std::move(source), data_origin::Device{ready->deviceName});
  } else if (state.is<DeviceState::Stopped>() || state.is<DeviceState::Waiting>()) {
    model_.sourceGone();
  }
}

PhoneIdentity identityOf(const PhoneOnCable& phone, const std::string& name) {
  return {sha256Hex(phone.serialNumber.value_or(phone.deviceID)), name,
          phone.model.value_or("iPhone")};
}

}  // namespace tavrix
