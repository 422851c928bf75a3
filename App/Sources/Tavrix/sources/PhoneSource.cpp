#include "sources/PhoneSource.h"

#include "device/cable/CameraMediaSource.h"
#include "foundation/Digest.h"
#include "media/Snapshot.h"
#include "sources/SourcePictures.h"

namespace tavrix {
namespace {

class CableFiles : public SourceFiles {
 public:
  CableFiles(PhoneBrowser& browser, const PhoneOnCable& phone, Shared<FolderCatalogue> catalogue,
             DeviceWatcher* watcher)
      : browser_(browser),
        deviceID_(phone.deviceID),
        key_(MetadataCache::phoneKey(phone.serialNumber)),
        catalogue_(std::move(catalogue)),
        watcher_(watcher) {}

  std::unique_ptr<MediaSource> openMedia(AwaitPhone awaitPhone,
                                         std::stop_token stop) const override {
    return std::make_unique<CameraMediaSource>(CameraMediaSource::Setup{
        browser_, deviceID_, std::move(awaitPhone), std::move(stop), catalogue_->oddPaths});
  }
  std::optional<std::vector<MediaAsset>> assetsIn(const TimeZone& zone) const override {
    return Snapshot::assetsOf(catalogue_->items, zone);
  }
  std::optional<PictureAccess> pictures() const override {
    return PictureAccess{key_, picturesOfPhone(browser_, deviceID_, catalogue_->oddPaths)};
  }
  bool reportLost() const override {
    if (watcher_ == nullptr) return false;
    watcher_->phoneLost();
    return true;
  }

 private:
  PhoneBrowser& browser_;
  std::string deviceID_;
  std::string key_;
  Shared<FolderCatalogue> catalogue_;
  DeviceWatcher* watcher_;
};

/// Returns true if the watcher will leave this state by itself.
bool isUnderWay(const DeviceState& state) {
  const auto* const connecting = state.as<DeviceState::Connecting>();
  return (connecting != nullptr && !connecting->awaitsTrust) ||
         state.is<DeviceState::Enumerating>() || state.is<DeviceState::ReadingMetadata>();
}

}  // namespace

FolderCatalogue PhoneSource::readCatalogue(const ReadingSetup& reading) {
  if (browser_ == nullptr) {
    using Failed = DeviceState::Failed;
    throw PhoneNotReady{{Failed{Failed::Reason::noService, {}}}, {}};
  }
  StandardMainLoop loop;
  DeviceWatcher watcher{{.browser = *browser_,
                         .loop = loop,
                         .cacheDirectory = reading.cacheDirectory,
                         .zone = reading.zone,
                         .now = reading.now,
                         .log = reading.log,
                         .wanted = wanted_}};
  const auto subscription = watcher.subscribe({.stateChanged = [&](const DeviceState& state) {
    const auto* const status = state.as<DeviceState::ReadingMetadata>();
    if (status != nullptr && reading.progress) reading.progress(status->status);
  }});
  const std::stop_callback onStop{reading.stop, [&] { loop.post([&] { watcher.stopReading(); }); }};
  watcher.start();
  loop.runUntil([&] {
    const bool isOver = watcher.hasLooked() && !isUnderWay(watcher.state());
    return isOver || (reading.stop.stop_requested() && !isUnderWay(watcher.state()));
  });
  others_ = watcher.others();
  const auto* const ready = watcher.state().as<DeviceState::Ready>();
  if (ready == nullptr) throw PhoneNotReady{watcher.state(), others_};
  phone_ = ready->phone;
  catalogue_ = ready->catalogue;
  return *catalogue_;
}

std::string PhoneSource::nameOr(const std::optional<std::string>& givenName) const {
  return givenName.value_or(phone().name.value_or("iPhone"));
}

PhoneIdentity PhoneSource::identity(const std::optional<std::string>& givenName) const {
  return identityOf(phone(), nameOr(givenName));
}

std::shared_ptr<const SourceFiles> PhoneSource::files() const {
  return filesOfPhone(*browser_, phone(), catalogue_, nullptr);
}

std::shared_ptr<const SourceFiles> filesOfPhone(PhoneBrowser& browser, const PhoneOnCable& phone,
                                                Shared<FolderCatalogue> catalogue,
                                                DeviceWatcher* watcher) {
  return std::make_shared<CableFiles>(browser, phone, std::move(catalogue), watcher);
}

PhoneIdentity identityOf(const PhoneOnCable& phone, const std::string& name) {
  return {sha256Hex(phone.serialNumber.value_or(phone.deviceID)), name,
          phone.model.value_or("iPhone"), true};
}

}  // namespace tavrix
