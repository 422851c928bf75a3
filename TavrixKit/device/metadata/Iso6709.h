#pragma once

#include <optional>
#include <string_view>

#include "foundation/GeoPoint.h"

namespace tavrix {

/// Parses a point such as "+34.6648-086.4704+197.095/" (ISO 6709, annex H). Latitude and longitude
/// are each given as degrees, degrees and minutes, or degrees, minutes and seconds; the last of
/// these may have a fraction. Text after them is ignored. Returns nullopt if the text has another
/// form.
std::optional<GeoPoint> parseIso6709(std::string_view text);

}  // namespace tavrix
