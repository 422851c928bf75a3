#include "sources/PictureSource.h"

#include "foundation/files/FileError.h"
#include "sources/CardSource.h"
#include "sources/PhoneSource.h"
#include "sources/SnapshotSource.h"

namespace tavrix {
namespace {

constexpr std::string_view anyPhone = "phone";
constexpr std::string_view phonePrefix = "phone:";

std::optional<std::string> cameraFolderOf(const std::string& source) {
  if (SnapshotSource::isSnapshot(source)) return std::nullopt;
  try {
    return SourceFolder::catalogueFolder(source);
  } catch (const FileError&) {
    // Reading the snapshot reports that the folder is missing or locked.
    return std::nullopt;
  }
}

}  // namespace

std::string PictureSource::nameOr(const std::optional<std::string>& givenName) const {
  return givenName.value_or("iPhone");
}

bool isPhone(std::string_view source) {
  return source == anyPhone || source.starts_with(phonePrefix);
}

std::string wantedNumber(std::string_view source) {
  if (!source.starts_with(phonePrefix)) return {};
  return std::string{source.substr(phonePrefix.size())};
}

std::unique_ptr<PictureSource> openPictureSource(const std::string& source, PhoneBrowser* browser) {
  if (isPhone(source)) return std::make_unique<PhoneSource>(browser, wantedNumber(source));
  if (const auto folder = cameraFolderOf(source)) {
    return std::make_unique<CardSource>(source, *folder);
  }
  return std::make_unique<SnapshotSource>(source);
}

ConnectedSource connectedSource(const PictureSource& source, std::vector<MediaAsset> assets,
                                const TimeZone& zone, std::uint64_t unreadFolders,
                                const std::optional<std::string>& givenName) {
  return {.deviceName = source.nameOr(givenName),
          .phone = source.identity(givenName),
          .assets = std::move(assets),
          .zone = zone,
          .unreadFolders = unreadFolders,
          .isCard = source.kind() == PictureSource::Kind::card,
          .files = source.files()};
}

}  // namespace tavrix
