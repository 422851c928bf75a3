#include "media/MediaAsset.h"

#include <algorithm>
#include <functional>
#include <string>

#include "media/ParsedName.h"
#include "media/ResourceBundles.h"

namespace tavrix {
namespace {

/// A part of the record's text, or no text if `begin` is `absent`.
struct Piece {
  static constexpr std::uint32_t absent = UINT32_MAX;
  std::uint32_t begin = absent;
  std::uint32_t length = 0;
};

/// Packs several texts into one. An id of the form directory/name is stored once for id, directory
/// and name.
class Packer {
 public:
  explicit Packer(std::size_t capacity) { text_.reserve(capacity); }

  /// Adds a text, unless it is already at the offset `expected`.
  Piece add(MediaAsset::Text text, std::size_t expected = 0) {
    if (!text) return {};
    std::size_t begin = std::min(expected, text_.size());
    if (!std::string_view{text_}.substr(begin).starts_with(*text)) {
      begin = text_.size();
      text_ += *text;
    }
    return {static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(text->size())};
  }
  std::string take() {
    text_.shrink_to_fit();
    return std::move(text_);
  }

 private:
  std::string text_;
};

/// Returns true if the text has a beginning, in any case. `beginning` is in lower case.
bool beginsWith(std::string_view text, std::string_view beginning) {
  return text.size() >= beginning.size() &&
         std::equal(beginning.begin(), beginning.end(), text.begin(),
                    [](char a, char b) { return a == (b >= 'A' && b <= 'Z' ? b + 32 : b); });
}

bool isPng(std::string_view name) {
  constexpr std::string_view extension = ".png";
  return name.size() > extension.size() &&
         beginsWith(name.substr(name.size() - extension.size()), extension);
}

}  // namespace

struct MediaAsset::Record {
  static constexpr std::uint64_t noContentID = 0;

  Piece id;
  Piece name;
  Piece directory;
  Piece cloudID;
  Piece sha256;
  std::uint64_t sizeBytes = 0;
  std::optional<Instant> captureDate;
  std::optional<Instant> fileDate;  ///< only if the capture date is from the name
  std::optional<GeoPoint> location;
  MediaKind kind = MediaKind::other;
  bool isOptimized = false;
  bool isEditedVariant = false;
  bool hasCameraDate = false;
  bool isScreenshot = false;
  std::int32_t cameraShift = 0;  ///< camera date minus capture date, in seconds
  std::uint64_t contentID = noContentID;
  std::string text;

  std::string_view view(Piece piece) const {
    return std::string_view{text}.substr(piece.begin, piece.length);
  }
  Text optionalView(Piece piece) const {
    return piece.begin == Piece::absent ? Text{} : Text{view(piece)};
  }
};

MediaAsset::MediaAsset(std::string_view id, std::string_view name, Text directory, MediaKind kind,
                       std::uint64_t sizeBytes, std::optional<Instant> captureDate,
                       std::optional<GeoPoint> location, bool isOptimized, Text cloudID,
                       Text sha256, std::optional<Instant> cameraDate, bool hasCameraData,
                       Text contentID, std::optional<Instant> fileDate) {
  auto record = std::make_shared<Record>();
  Packer packer{id.size()};
  record->id = packer.add(id);
  record->name = packer.add(name, directory ? directory->size() + 1 : 0);
  record->directory = packer.add(directory);
  record->cloudID = packer.add(cloudID);
  record->sha256 = packer.add(sha256);
  record->text = packer.take();
  record->sizeBytes = sizeBytes;
  record->captureDate = captureDate;
  record->fileDate = fileDate;
  record->location = location;
  record->kind = kind;
  record->isOptimized = isOptimized;
  if (captureDate && cameraDate) {
    record->hasCameraDate = true;
    record->cameraShift = static_cast<std::int32_t>(
        std::chrono::round<std::chrono::seconds>(*cameraDate - *captureDate).count());
  }
  // Only equality matters, and texts would be a third of the memory of a library of Live Photos.
  if (contentID && !contentID->empty()) {
    record->contentID = std::max<std::uint64_t>(std::hash<std::string_view>{}(*contentID), 1);
  }
  record->isEditedVariant =
      BundleBuilder::isEditedName(name) || ResourceBundles::isEditedResource(id);
  record->isScreenshot = kind == MediaKind::photo && (beginsWith(name, "screenshot") ||
                                                      (isPng(name) && !location && !hasCameraData));
  record_ = std::move(record);
}

std::string_view MediaAsset::id() const { return record_->view(record_->id); }
std::string_view MediaAsset::name() const { return record_->view(record_->name); }
MediaAsset::Text MediaAsset::directory() const { return record_->optionalView(record_->directory); }
MediaKind MediaAsset::kind() const { return record_->kind; }
std::uint64_t MediaAsset::sizeBytes() const { return record_->sizeBytes; }
std::optional<Instant> MediaAsset::captureDate() const { return record_->captureDate; }
std::optional<Instant> MediaAsset::cameraDate() const {
  if (!record_->hasCameraDate) return std::nullopt;
  return *record_->captureDate + std::chrono::seconds{record_->cameraShift};
}
std::optional<DateSource> MediaAsset::dateSource() const {
  if (!record_->captureDate) return std::nullopt;
  if (record_->hasCameraDate) return DateSource::metadata;
  return record_->fileDate ? DateSource::name : DateSource::file;
}
std::optional<Instant> MediaAsset::fileDate() const {
  if (record_->hasCameraDate) return std::nullopt;
  return record_->fileDate ? record_->fileDate : record_->captureDate;
}
std::optional<GeoPoint> MediaAsset::location() const { return record_->location; }
bool MediaAsset::isOptimized() const { return record_->isOptimized; }
bool MediaAsset::isEditedVariant() const { return record_->isEditedVariant; }
bool MediaAsset::isScreenshot() const { return record_->isScreenshot; }
std::optional<std::uint64_t> MediaAsset::contentID() const {
  if (record_->contentID == Record::noContentID) return std::nullopt;
  return record_->contentID;
}
MediaAsset::Text MediaAsset::cloudID() const { return record_->optionalView(record_->cloudID); }
MediaAsset::Text MediaAsset::sha256() const { return record_->optionalView(record_->sha256); }

bool operator==(const MediaAsset& a, const MediaAsset& b) {
  if (a.record_ == b.record_) return true;
  return a.id() == b.id() && a.name() == b.name() && a.directory() == b.directory() &&
         a.kind() == b.kind() && a.sizeBytes() == b.sizeBytes() &&
         a.captureDate() == b.captureDate() && a.cameraDate() == b.cameraDate() &&
         a.fileDate() == b.fileDate() && a.location() == b.location() &&
         a.isOptimized() == b.isOptimized() && a.isScreenshot() == b.isScreenshot() &&
         a.contentID() == b.contentID() && a.cloudID() == b.cloudID() && a.sha256() == b.sha256();
}

}  // namespace tavrix
