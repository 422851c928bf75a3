#include "sources/FollowedDevice.h"

#include "sources/PhoneSource.h"

namespace tavrix {

FollowedDevice::FollowedDevice(Setup setup)
    : setup_(std::move(setup)), wanted_(setup_.watcher.wanted()) {
  watcherSubscription_ =
      setup_.watcher.subscribe({.stateChanged = [this](const DeviceState& state) { follow(state); },
                                .unseenChanged = [this](bool) { publishDevice(); },
                                .othersChanged = [this](const auto&) { publishDevice(); }});
  setup_.model.steerWith([this](bool isTransferring) { keepToRun(isTransferring); });
  follow(setup_.watcher.state());
}

FollowedDevice::~FollowedDevice() { setup_.model.steerWith({}); }

void FollowedDevice::publishDevice() {
  const DeviceWatcher& watcher = setup_.watcher;
  setup_.model.deviceChanged({watcher.state(), watcher.phoneOnCableButUnseen(), watcher.others()});
}

void FollowedDevice::follow(const DeviceState& state) {
  publishDevice();
  if (const auto* const ready = state.as<DeviceState::Ready>()) {
    deviceID_ = ready->phone.deviceID;
    ConnectedSource source = sourceOf(*ready);
    auto origin = data_origin::Device{source.deviceName};
    setup_.model.sourceReady(std::move(source), std::move(origin));
  } else {
    // Also if another phone is being connected already.
    setup_.model.sourceGone();
  }
}

ConnectedSource FollowedDevice::sourceOf(const DeviceState::Ready& ready) const {
  ConnectedSource source;
  source.deviceName = setup_.deviceName.value_or(ready.deviceName);
  source.phone = identityOf(ready.phone, source.deviceName);
  source.assets = ready.assets;
  source.zone = setup_.watcher.zone();
  source.unreadFolders = ready.catalogue->unreadFolders();
  source.files = filesOfPhone(setup_.browser, ready.phone, ready.catalogue, &setup_.watcher);
  return source;
}

void FollowedDevice::keepToRun(bool isTransferring) {
  setup_.watcher.setWanted(isTransferring ? deviceID_ : wanted_);
}

}  // namespace tavrix
