#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "foundation/GeoPoint.h"
#include "foundation/Time.h"

namespace tavrix {

/// The capture data that a camera writes into a picture.
struct ExifData {
  LocalTime taken;                    ///< DateTimeOriginal
  std::chrono::minutes utcOffset{0};  ///< OffsetTimeOriginal
  std::optional<GeoPoint> place;
  int width = 0;   ///< pixels
  int height = 0;  ///< pixels

  friend bool operator==(const ExifData&, const ExifData&) = default;
};

/// Return a time and an offset as EXIF text: "2026:05:20 12:00:00" and "+03:00".
std::string exifDateText(LocalTime time);
std::string exifOffsetText(std::chrono::minutes utcOffset);
/// Returns the point rounded to the precision stored here: hundredths of an arc second.
GeoPoint exifRounded(const GeoPoint& point);

/// Returns the content of a JPEG file's APP1 segment: an Exif 2.32 block with date, pixel size and,
/// if there is a place, GPS position.
std::string exifSegment(const ExifData& data);

}  // namespace tavrix
