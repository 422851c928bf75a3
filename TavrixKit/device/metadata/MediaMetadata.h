#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "media/SnapshotItem.h"

namespace tavrix {

/// The capture metadata that a file itself contains; the fields are those of SnapshotItem.
struct MediaMetadata {
  std::optional<std::string> exifDate;
  std::optional<std::string> exifOffset;
  std::optional<double> lat;
  std::optional<double> lon;
  std::optional<std::int64_t> px;
  std::optional<std::int64_t> py;
  std::optional<bool> cam;               ///< only for stills
  std::optional<std::string> contentID;  ///< never empty

  /// Sets the size as stored, before any rotation. Ignores a size without pixels, and a width or
  /// height above 2^30.
  void setPixels(std::uint64_t width, std::uint64_t height) {
    constexpr std::uint64_t limit = 1U << 30U;
    if (width == 0 || height == 0 || width > limit || height > limit) return;
    px = static_cast<std::int64_t>(width);
    py = static_cast<std::int64_t>(height);
  }
  /// Sets the position in degrees. Ignores values outside ±90° latitude or ±180° longitude, and
  /// 0, 0, which cameras write while they do not know where they are.
  void setPosition(double latitude, double longitude) {
    if (!(latitude >= -90 && latitude <= 90 && longitude >= -180 && longitude <= 180)) return;
    if (latitude == 0 && longitude == 0) return;
    // Normalises −0.0 to 0.0; the cache does not keep the sign.
    lat = latitude + 0.0;
    lon = longitude + 0.0;
  }

  friend bool operator==(const MediaMetadata&, const MediaMetadata&) = default;
};

/// Returns the metadata of a catalogue entry.
MediaMetadata metadataOf(const SnapshotItem& item);
/// Replaces the metadata of `to` by that of `from`, a record of the cache. A record at 0, 0, which
/// an earlier reader kept, has no position, and an empty content identifier stands for none.
void copyMetadata(const SnapshotItem& from, SnapshotItem& to);
/// Returns `item` with its metadata replaced by `metadata`.
SnapshotItem withMetadata(SnapshotItem item, const MediaMetadata& metadata);

}  // namespace tavrix
