#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "media/SnapshotItem.h"

namespace tavrix {

/// What a file itself tells of its capture; the fields are those of SnapshotItem.
struct MediaMetadata {
  std::optional<std::string> exifDate;
  std::optional<std::string> exifOffset;
  std::optional<double> lat;
  std::optional<double> lon;
  std::optional<std::int64_t> px;
  std::optional<std::int64_t> py;
  std::optional<bool> cam;  ///< of stills alone

  /// Sets the size as stored, before any rotation; a size without pixels is none.
  void setPixels(std::uint64_t width, std::uint64_t height) {
    constexpr std::uint64_t limit = 1U << 30U;
    if (width == 0 || height == 0 || width > limit || height > limit) return;
    px = static_cast<std::int64_t>(width);
    py = static_cast<std::int64_t>(height);
  }
  /// Sets the position; one that is not on the Earth is none.
  void setPosition(double latitude, double longitude) {
    if (!(latitude >= -90 && latitude <= 90 && longitude >= -180 && longitude <= 180)) return;
    // Of zero there is one: a cache that is read back knows no sign of it.
    lat = latitude + 0.0;
    lon = longitude + 0.0;
  }

  friend bool operator==(const MediaMetadata&, const MediaMetadata&) = default;
};

/// The metadata that a catalogue entry holds; the same into another entry; an entry with other
/// metadata.
MediaMetadata metadataOf(const SnapshotItem& item);
void copyMetadata(const SnapshotItem& from, SnapshotItem& to);
SnapshotItem withMetadata(SnapshotItem item, const MediaMetadata& metadata);

}  // namespace tavrix
