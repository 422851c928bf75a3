#include "sources/FollowedDevice.h"

#include "sources/PhoneSource.h"

namespace tavrix {

FollowedDevice::FollowedDevice(Setup setup)
    : setup_(std::move(setup)), wanted_(setup_.watcher.wanted()) {
  watcherSubscription_ = setup_.watcher.subscribe(
      {.stateChanged = [this](const DeviceState& state) { follow(state); }});
  modelSubscription_ =
      setup_.model.subscribe([this](const AppState& before, const AppState& after) {
        const bool isTransferring = std::holds_alternative<app_phase::Transferring>(after.phase);
        if (before.phase.index() != after.phase.index()) keepToRun(isTransferring);
      });
  follow(setup_.watcher.state());
}

void FollowedDevice::follow(const DeviceState& state) {
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
