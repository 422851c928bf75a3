#include "text/SuggestionText.h"

#include "naming/GroupPlaces.h"
#include "text/SuggestionSentences.h"

namespace tavrix {
namespace {

std::string titleOf(Language language, const MediaGroup& trip, const PlaceLookup* places,
                    const TimeZone& zone) {
  if (places != nullptr) {
    const std::string locale = language == Language::russian ? "ru" : "en";
    if (auto city = placesOf(trip, *places, locale).city(false)) return *std::move(city);
  }
  const auto span = daysOf(trip, zone);
  return span ? dayText(span->first) : trip.id;
}

}  // namespace

std::string suggestionText(Language language, const MergeSuggestion& suggestion,
                           const MediaGroup& firstTrip, const PlaceLookup* places,
                           const TimeZone& zone) {
  const std::string title = titleOf(language, firstTrip, places, zone);
  const std::string trips = counted(language, suggestion.trips, sentences::tripsToMerge);
  if (suggestion.outings == 1) return say(language, sentences::mergeOneOuting, title, trips);
  return say(language, sentences::mergeOutings, title, trips,
             counted(language, suggestion.outings, sentences::outingsToMerge));
}

}  // namespace tavrix
