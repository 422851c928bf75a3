#include "model/StateTopics.h"

namespace tavrix {
namespace {

template <typename Value>
bool differ(const Value& before, const Value& after) {
  return !(before == after);
}
template <typename Value>
bool differ(const Shared<Value>& before, const Shared<Value>& after) {
  return !isSame(before, after);
}
bool differ(const AppPhase& before, const AppPhase& after) {
  const auto* const first = std::get_if<app_phase::Done>(&before);
  const auto* const second = std::get_if<app_phase::Done>(&after);
  // The report follows from the run.
  if (first != nullptr && second != nullptr) return first->number != second->number;
  return before.index() != after.index();
}

}  // namespace

StateTopics changedTopics(const AppState& before, const AppState& after) {
  StateTopics topics;
  const auto compare = [&](StateTopic topic, auto... fields) {
    if ((differ(before.*fields, after.*fields) || ...)) topics.add(topic);
  };
  using S = AppState;
  compare(StateTopic::device, &S::origin, &S::assets, &S::device, &S::sampleDirectory,
          &S::sampleLibraryPreparing);
  compare(StateTopic::rows, &S::displayGroups, &S::visibleGroups, &S::mergeSuggestions);
  compare(StateTopic::checks, &S::checks);
  compare(StateTopic::counters, &S::newFilesCount, &S::newBytes, &S::knownFilesCount,
          &S::optimizedCount, &S::areCountersExact, &S::isComputing);
  compare(StateTopic::outline, &S::navSelection, &S::navOutline, &S::searchText,
          &S::searchSuggestions);
  compare(StateTopic::settings, &S::settings, &S::savedPresets, &S::homeCandidates,
          &S::homeIsAmbiguous, &S::homePeriods, &S::canCheckForUpdates);
  compare(StateTopic::destination, &S::destination, &S::destinationState, &S::findings);
  compare(StateTopic::phase, &S::phase, &S::transferFolders, &S::plannedConversions,
          &S::optimizedSkipped, &S::lastRecordID);
  compare(StateTopic::progress, &S::progress, &S::pause);
  compare(StateTopic::questions, &S::overlay, &S::highlight);
  return topics;
}

}  // namespace tavrix
