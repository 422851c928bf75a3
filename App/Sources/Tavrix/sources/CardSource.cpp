#include "sources/CardSource.h"

#include "device/folders/FolderMediaSource.h"
#include "sources/SourcePictures.h"

namespace tavrix {
namespace {

class CardFiles : public SourceFiles {
 public:
  CardFiles(std::string source, std::string cameraFolder, OddPaths oddPaths)
      : source_(std::move(source)),
        cameraFolder_(std::move(cameraFolder)),
        oddPaths_(std::move(oddPaths)) {}

  std::unique_ptr<MediaSource> openMedia(AwaitPhone, std::stop_token) const override {
    return std::make_unique<FolderMediaSource>(cameraFolder_, oddPaths_);
  }
  std::optional<PictureAccess> pictures() const override {
    return picturesBelow(cameraFolder_, [oddPaths = oddPaths_](const MediaAsset& asset) {
      return oddPaths.pathOf(asset.id());
    });
  }
  void checkDestination(const std::string& destination) const override {
    Destination::checkApartFromFolder(source_, cameraFolder_, destination);
  }

 private:
  std::string source_;
  std::string cameraFolder_;
  OddPaths oddPaths_;
};

}  // namespace

FolderCatalogue CardSource::readCatalogue(const ReadingSetup& reading) {
  FolderCatalogue catalogue =
      FolderCatalogue::read(cameraFolder_,
                            {.phoneKey = SourceFolder::phoneKey(cameraFolder_),
                             .directory = reading.cacheDirectory,
                             .now = reading.now,
                             .log = reading.log,
                             .progress = reading.progress},
                            reading.stop);
  oddPaths_ = catalogue.oddPaths;
  return catalogue;
}

PhoneIdentity CardSource::identity(const std::optional<std::string>& givenName) const {
  return givenName ? snapshotPhone(*givenName) : folderPhone(cameraFolder_, nameOr(givenName));
}

std::shared_ptr<const SourceFiles> CardSource::files() const {
  return std::make_shared<CardFiles>(source_, cameraFolder_, oddPaths_);
}

}  // namespace tavrix
