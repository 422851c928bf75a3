#pragma once

#include <optional>
#include <string_view>

#include "foundation/GeoPoint.h"

namespace tavrix {

/// A point of the form "+34.6648-086.4704+197.095/" (ISO 6709, annex H): latitude and longitude
/// each as degrees, degrees and minutes, or degrees, minutes and seconds, the last with a fraction;
/// what follows them is passed over. Nothing when the text has another form.
std::optional<GeoPoint> parseIso6709(std::string_view text);

}  // namespace tavrix
