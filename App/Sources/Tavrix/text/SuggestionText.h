#pragma once

#include <string>

#include "foundation/Sentence.h"
#include "foundation/TimeZone.h"
#include "grouping/MergeSuggestion.h"
#include "media/PlaceLookup.h"

namespace tavrix {

/// Returns a suggestion as a question: "Beijing: 2 trips and an outing – one folder?" The city is
/// that of the shots of `firstTrip`, the first trip of the suggestion. Without a city, or if
/// `places` is null, the question names the trip's first day in the zone.
std::string suggestionText(Language language, const MergeSuggestion& suggestion,
                           const MediaGroup& firstTrip, const PlaceLookup* places,
                           const TimeZone& zone);

}  // namespace tavrix
