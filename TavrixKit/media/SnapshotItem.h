#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "foundation/TimeZone.h"
#include "media/MediaAsset.h"

namespace tavrix {

/// One catalogue entry as stored in the snapshot file and the metadata cache. docs/snapshot.md
/// describes each field. The names of the fields are the JSON keys.
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
  std::optional<std::string> contentID;

  /// Returns the natural id of the file: dir/name, or only the name if dir is absent or empty.
  std::string assetID() const;
  /// Appends the natural id to `text`.
  void appendAssetID(std::string& text) const;
  /// Returns the asset with an id that the caller chooses. `zone` is the time zone of an exifDate
  /// without a usable offset, and of one in the name. If exifDate is absent or cannot be read, the
  /// date in the name is used if `names` allows it, otherwise itemDate. If the kind is unknown, the
  /// extension of the name determines it.
  MediaAsset mediaAsset(std::string_view id, const TimeZone& zone,
                        DatesFromNames names = DatesFromNames::ignored) const;

  friend bool operator==(const SnapshotItem&, const SnapshotItem&) = default;
};

/// Returns the moment of an EXIF date ("2026:05:20 12:00:00") with its offset ("+03:00"). Without a
/// usable offset the date is a local time of `zone`. Returns nullopt if the date is malformed or
/// does not exist.
std::optional<Instant> instantOfExif(std::string_view exifDate,
                                     std::optional<std::string_view> exifOffset,
                                     const TimeZone& zone);
/// Returns true if a text has the form of an EXIF offset: "+03:00".
bool isExifOffset(std::string_view text);

}  // namespace tavrix
