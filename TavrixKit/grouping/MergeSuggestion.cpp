#include "grouping/MergeSuggestion.h"

#include <algorithm>
#include <set>

namespace tavrix::MergeSuggestions {
namespace {

using grouping_reason::NewCity;
using TripGrouping::Stay;

/// Returns true if the stay at `i` is an outing from the stays beside it, which are in one city.
bool isOutingBetween(const std::vector<Stay>& stays, std::size_t i,
                     const GroupingSettings& settings) {
  if (i == 0 || i + 1 >= stays.size() || stays[i].isTrip(settings)) return false;
  return std::holds_alternative<NewCity>(stays[i].beginReason) &&
         std::holds_alternative<NewCity>(stays[i].endReason) &&
         haversineDistanceKm(stays[i - 1].center, stays[i + 1].center) <= settings.tripCityKm;
}

/// Returns the suggestion for the stays from `begin` to `end`, exclusive, which has no trip if none
/// of them is one.
MergeSuggestion suggestionOf(const std::vector<Stay>& stays, const std::vector<std::string>& ids,
                             std::size_t begin, std::size_t end, const GroupingSettings& settings) {
  MergeSuggestion suggestion;
  for (std::size_t i = begin; i < end; ++i) {
    suggestion.groupIDs.push_back(ids[i]);
    if (!stays[i].isTrip(settings)) {
      ++suggestion.outings;
    } else if (++suggestion.trips == 1) {
      suggestion.firstTripID = ids[i];
    }
  }
  return suggestion;
}

bool isWithin(const MergeSuggestion& suggestion, const std::vector<std::string>& merge) {
  return std::ranges::all_of(suggestion.groupIDs, [&](const std::string& id) {
    return std::ranges::find(merge, id) != merge.end();
  });
}

}  // namespace

std::vector<MergeSuggestion> of(const std::vector<Stay>& stays, const std::vector<std::string>& ids,
                                const GroupingSettings& settings) {
  std::vector<MergeSuggestion> suggestions;
  for (std::size_t begin = 0; begin + 2 < stays.size(); ++begin) {
    std::size_t end = begin + 1;
    while (isOutingBetween(stays, end, settings)) end += 2;
    if (end == begin + 1) continue;
    MergeSuggestion suggestion = suggestionOf(stays, ids, begin, end, settings);
    if (suggestion.trips > 0) suggestions.push_back(std::move(suggestion));
    begin = end - 1;
  }
  return suggestions;
}

std::vector<MergeSuggestion> open(std::vector<MergeSuggestion> suggestions,
                                  const GroupMerges& merges, const GroupMerges& rejected) {
  std::set<std::string> rejectedIDs;
  for (const auto& ids : rejected) rejectedIDs.insert(GroupMerging::mergedID(ids));
  std::erase_if(suggestions, [&](const MergeSuggestion& each) {
    return rejectedIDs.contains(GroupMerging::mergedID(each.groupIDs)) ||
           std::ranges::any_of(merges, [&](const auto& merge) { return isWithin(each, merge); });
  });
  return suggestions;
}

}  // namespace tavrix::MergeSuggestions
