#include "model/FollowedDevice.h"

#include "device/CameraMediaSource.h"
#include "foundation/Digest.h"
#include "media/Snapshot.h"

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
    // Also when another phone is on its way already.
    setup_.model.sourceGone();
  }
}

ConnectedSource FollowedDevice::sourceOf(const DeviceState::Ready& ready) const {
  ConnectedSource source;
  source.deviceName = setup_.deviceName.value_or(ready.deviceName);
  source.phone = identityOf(ready.phone, source.deviceName);
  source.assets = ready.assets;
  source.zone = setup_.watcher.zone();
  source.assetsIn = [catalogue = ready.catalogue](const TimeZone& zone) {
    return Snapshot::assetsOf(catalogue->items, zone);
  };
  source.unreadFolders = ready.catalogue->unreadFolders();
  source.openMedia = [&browser = setup_.browser, deviceID = ready.phone.deviceID,
                      catalogue = ready.catalogue](AwaitPhone awaitPhone, std::stop_token stop) {
    return std::make_unique<CameraMediaSource>(CameraMediaSource::Setup{
        browser, deviceID, std::move(awaitPhone), std::move(stop), catalogue->oddPaths});
  };
  source.lost = [&watcher = setup_.watcher] { watcher.phoneLost(); };
  return source;
}

void FollowedDevice::keepToRun(bool isTransferring) {
  setup_.watcher.setWanted(isTransferring ? deviceID_ : wanted_);
}

PhoneIdentity identityOf(const PhoneOnCable& phone, const std::string& name) {
  return {sha256Hex(phone.serialNumber.value_or(phone.deviceID)), name,
          phone.model.value_or("iPhone"), true};
}

}  // namespace tavrix
