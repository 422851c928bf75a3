#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "media/MediaAsset.h"

namespace tavrix {

/// One shot: all files that one press of the shutter created. A handle to an immutable record:
/// copying it copies a pointer. A moved-from bundle may only be assigned to or destroyed.
class AssetBundle {
 public:
  /// `original` must be one of `assets`.
  AssetBundle(std::string id, std::vector<MediaAsset> assets, MediaAsset original);

  const std::string& id() const;
  /// Returns all files of the shot in catalogue order, including the original.
  const std::vector<MediaAsset>& assets() const;
  /// Returns the main file of the shot.
  const MediaAsset& original() const;
  bool hasEditedVersion() const;

  /// Returns true if the shot is a still with its motion part.
  bool isLivePhoto() const;
  /// Returns true if `asset` is an unedited video of a Live Photo. It belongs to the still and is
  /// not a video of its own.
  bool isMotionPart(const MediaAsset& asset) const;
  /// Returns true for photos and for videos other than a motion part. Returns false for sidecars
  /// and other files.
  bool isPicture(const MediaAsset& asset) const;
  std::size_t pictureCount() const;
  /// Returns the original if it is a picture, otherwise the first picture, otherwise the original.
  /// The shot has the date, kind and name of this file.
  const MediaAsset& primaryPicture() const;
  std::optional<Instant> captureDate() const { return primaryPicture().captureDate(); }
  /// Returns the place where the shot was taken: the location of the primary picture, otherwise of
  /// the first file that has one. A location that is not on the Earth is ignored.
  std::optional<GeoPoint> position() const;

  /// Compares id, files and original.
  friend bool operator==(const AssetBundle& a, const AssetBundle& b);

 private:
  struct Record;
  std::shared_ptr<const Record> record_;
};

}  // namespace tavrix
