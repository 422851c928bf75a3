#include "text/MergedNote.h"

#include <algorithm>

namespace tavrix {
namespace {

/// After "из".
constexpr CountedNoun foldersMerged{"папки", "папок", "папок", "folder", "folders"};
constexpr Sentence<std::string_view, std::string_view> mergedFrom{"Склеено из {} {}",
                                                                  "Merged from {} {}"};
constexpr Sentence<std::string_view> eventsInside{"События внутри: {}", "Events inside: {}"};

bool isEventOrTrip(const MediaGroup& group) {
  return group.id.starts_with("event-") || group.id.starts_with("trip-");
}

}  // namespace

std::string mergedNote(Language language, const MediaGroup& group) {
  if (group.children.empty()) return {};
  const auto count = group.children.size();
  const std::string number = numberText(language, count);
  if (std::all_of(group.children.begin(), group.children.end(), isEventOrTrip)) {
    return say(language, eventsInside, number);
  }
  return say(language, mergedFrom, number, nounFor(language, count, foldersMerged));
}

}  // namespace tavrix
