#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "foundation/TimeZone.h"
#include "media/MediaAsset.h"

namespace tavrix {

/// One catalogue entry as the snapshot file and the metadata cache store it; docs/snapshot.md tells
/// the meaning of each field. The names are the JSON keys.
struct SnapshotItem {
  std::string name;
  std::optional<std::string> dir;
  std::string kind;
  std::uint64_t size = 0;
  std::optional<double> itemDate;
  std::optional<std::string> exifDate;
  std::optional<std::string> exifOffset;
  std::optional<double> lat;
  std::optional<double> lon;
  std::optional<std::int64_t> px;
  std::optional<std::int64_t> py;
  std::optional<bool> cam;

  /// The natural id of the file: dir/name, or the name alone without a (non-empty) dir.
  std::string assetID() const;
  /// Appends that id to a text.
  void appendAssetID(std::string& text) const;
  /// The asset under an id of the caller's choice. `zone` is where an exifDate without a usable
  /// offset was taken. An unreadable date falls back to itemDate, an unknown kind to the name's
  /// extension.
  MediaAsset mediaAsset(std::string_view id, const TimeZone& zone) const;

  friend bool operator==(const SnapshotItem&, const SnapshotItem&) = default;
};

/// The moment of an EXIF date ("2026:05:20 12:00:00") with its offset ("+03:00"); without a usable
/// offset the date is read in `zone`. Nothing when the date is malformed or does not exist.
std::optional<Instant> instantOfExif(std::string_view exifDate,
                                     std::optional<std::string_view> exifOffset,
                                     const TimeZone& zone);
/// Whether a text has the form of an EXIF offset: "+03:00".
bool isExifOffset(std::string_view text);

}  // namespace tavrix
