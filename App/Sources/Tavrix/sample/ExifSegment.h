#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "foundation/GeoPoint.h"
#include "foundation/Time.h"

namespace tavrix {

/// What a camera writes into a picture about its capture.
struct ExifData {
  LocalTime taken;                    ///< DateTimeOriginal
  std::chrono::minutes utcOffset{0};  ///< OffsetTimeOriginal
  std::optional<GeoPoint> place;
  int width = 0;   ///< pixels
  int height = 0;  ///< pixels

  friend bool operator==(const ExifData&, const ExifData&) = default;
};

/// "2026:05:20 12:00:00" and "+03:00": a time and an offset as EXIF writes them.
std::string exifDateText(LocalTime time);
std::string exifOffsetText(std::chrono::minutes utcOffset);
/// The point as EXIF can hold it here: in hundredths of an arc second.
GeoPoint exifRounded(const GeoPoint& point);

/// The content of a JPEG file's APP1 segment: an Exif 2.32 block with date, exposure, lens, pixel
/// size and, with a place, GPS position.
std::string exifSegment(const ExifData& data);

}  // namespace tavrix
