#include "sources/SnapshotSource.h"

#include <filesystem>

#include "foundation/files/FileError.h"
#include "foundation/files/FileReader.h"
#include "media/LocalMediaSource.h"
#include "media/Snapshot.h"
#include "sources/SourcePictures.h"

namespace tavrix {
namespace {

class SnapshotFiles : public SourceFiles {
 public:
  SnapshotFiles(std::string folder, std::string media)
      : folder_(std::move(folder)), media_(std::move(media)) {}

  std::unique_ptr<MediaSource> openMedia(AwaitPhone, std::stop_token) const override {
    return std::make_unique<LocalMediaSource>(media_);
  }
  std::optional<PictureAccess> pictures() const override {
    return picturesBelow(media_, [](const MediaAsset& asset) { return std::string{asset.name()}; });
  }
  void checkDestination(const std::string& destination) const override {
    Destination::checkApart(folder_, destination);
  }
  void checkMedia() const override {
    std::error_code error;
    if (!std::filesystem::is_directory(media_, error)) throw MediaMissing{media_};
    // Without these rights each file would fail on its own.
    const std::filesystem::directory_iterator entries{media_, error};
    const bool isOpen = !error && std::filesystem::is_directory(media_ + "/.", error);
    if (!isOpen) throw FileError{FileOperation::list, media_, error.value()};
  }

 private:
  std::string folder_;
  std::string media_;
};

}  // namespace

std::string pathIn(const std::string& folder, std::string_view name) {
  std::string path = folder;
  if (!path.ends_with('/')) path += '/';
  return path.append(name);
}

bool SnapshotSource::isSnapshot(const std::string& folder) {
  std::error_code error;
  const auto status = std::filesystem::symlink_status(SnapshotSource{folder}.snapshotPath(), error);
  return std::filesystem::exists(status);
}

std::string SnapshotSource::snapshotPath() const { return pathIn(folder_, "snapshot.json"); }
std::string SnapshotSource::mediaFolder() const { return pathIn(folder_, "media"); }

FolderCatalogue SnapshotSource::readCatalogue(const ReadingSetup&) {
  FolderCatalogue catalogue;
  catalogue.items = Snapshot::read(*openFileForReading(snapshotPath()));
  return catalogue;
}

std::vector<MediaAsset> SnapshotSource::readAssets(const ReadingSetup& reading) const {
  return Snapshot::readAssets(*openFileForReading(snapshotPath()), reading.zone);
}

PhoneIdentity SnapshotSource::identity(const std::optional<std::string>& givenName) const {
  return snapshotPhone(nameOr(givenName));
}

std::shared_ptr<const SourceFiles> SnapshotSource::files() const {
  return std::make_shared<SnapshotFiles>(folder_, mediaFolder());
}

}  // namespace tavrix
