#include "interface/options/HomeChoices.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "interface/words/DayText.h"
#include "text/HomeText.h"

namespace tavrix::window {
namespace {

using Choice = ChoiceSetting::Choice;

/// The number of places that are offered; the library looks up the names of these.
constexpr std::size_t offeredPlaces = 5;

const PlaceLookup* landmarksOf(const SettingsPort& port) {
  const auto& library = port.model().library();
  return library ? library->landmarks.get() : nullptr;
}

std::string nameOf(const SettingsPort& port, const GeoPoint& point) {
  return placeName(port.language(), landmarksOf(port), point)
      .value_or(fmt::format("{:.2f}, {:.2f}", point.latitude, point.longitude));
}

Choice choiceOf(const SettingsPort& port, const HomeCandidate& candidate) {
  const auto number = [&](std::int64_t count) {
    return numberText(port.language(), static_cast<std::uint64_t>(count));
  };
  const auto take = [center = candidate.center](Settings& settings) {
    settings.gathering.homeOverride = center;
    settings.gathering.homeOverrideName.reset();
  };
  return {.title = nameOf(port, candidate.center),
          .detail = say(port.language(), sentences::homeDays, number(candidate.totalDays),
                        number(candidate.recentDays)),
          .take = take};
}

}  // namespace

std::vector<Choice> homeChoices(const SettingsPort& port) {
  const Settings::Gathering& gathering = port.now().gathering;
  std::vector<Choice> choices;
  bool isFound = false;
  for (const HomeCandidate& candidate : *port.model().state().homeCandidates) {
    if (choices.size() == offeredPlaces) break;
    Choice choice = choiceOf(port, candidate);
    choice.isCurrent =
        gathering.homeOverride ? *gathering.homeOverride == candidate.center : choices.empty();
    if (choice.isCurrent && gathering.homeOverrideName) choice.title = *gathering.homeOverrideName;
    isFound = isFound || choice.isCurrent;
    choices.push_back(std::move(choice));
  }
  if (gathering.homeOverride && !isFound) {
    const auto name = gathering.homeOverrideName;
    choices.insert(choices.begin(), {.title = name ? *name : nameOf(port, *gathering.homeOverride),
                                     .detail = say(port.language(), sentences::homeChosen),
                                     .isCurrent = true});
  }
  return choices;
}

std::string homesText(const SettingsPort& port) {
  const auto& periods = *port.model().state().homePeriods;
  const auto format = [&](CivilDate day) { return dayInWords(port.language(), day); };
  return fmt::format(
      "{}",
      fmt::join(tavrix::homesText(port.language(), periods, landmarksOf(port), format), "\n"));
}

std::string homeNote(const SettingsPort& port) {
  const AppState& state = port.model().state();
  if (port.now().gathering.homeOverride) return {};
  if (state.homeCandidates->empty()) return say(port.language(), sentences::homeMissing);
  return state.homeIsAmbiguous ? say(port.language(), sentences::homeAmbiguous) : std::string{};
}

}  // namespace tavrix::window
