#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "media/MediaAsset.h"

namespace tavrix {

/// One shot: every file that one press of the shutter left. A handle to an immutable record:
/// copying it copies a pointer. A moved-from bundle may only be assigned or destroyed.
class AssetBundle {
 public:
  /// `original` must be one of `assets`.
  AssetBundle(std::string id, std::vector<MediaAsset> assets, MediaAsset original);

  const std::string& id() const;
  /// Every file of the shot in catalogue order, the original included.
  const std::vector<MediaAsset>& assets() const;
  /// The shot's lead file.
  const MediaAsset& original() const;
  bool hasEditedVersion() const;

  /// A still with its motion part.
  bool isLivePhoto() const;
  /// An unedited video of a Live Photo: belongs to its still, is no video of its own.
  bool isMotionPart(const MediaAsset& asset) const;
  /// Photos and videos except a Live Photo's motion part; sidecars and other files never are.
  bool isPicture(const MediaAsset& asset) const;
  std::size_t pictureCount() const;
  /// The original when that is a picture, else the first picture, else the original. The shot's
  /// date, kind and name are its own.
  const MediaAsset& primaryPicture() const;
  std::optional<Instant> captureDate() const { return primaryPicture().captureDate(); }
  /// Where the shot was taken: the primary picture's location, else that of the first file that has
  /// one. A location that is nowhere on the Earth counts as none.
  std::optional<GeoPoint> position() const;

  /// Equal in id, files and original.
  friend bool operator==(const AssetBundle& a, const AssetBundle& b);

 private:
  struct Record;
  std::shared_ptr<const Record> record_;
};

}  // namespace tavrix
