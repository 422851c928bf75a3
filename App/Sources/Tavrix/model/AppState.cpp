#include "model/AppState.h"

#include <algorithm>

namespace tavrix {

bool templateEditorPresented(const AppState& state) {
  return state.overlay.is<overlay::TemplateEditor>();
}

bool optimizedInfoPresented(const AppState& state) {
  return state.overlay.is<overlay::OptimizedInfo>();
}

bool optimizedConfirmPresented(const AppState& state) {
  return state.overlay.is<overlay::OptimizedQuestion>();
}

std::optional<TransferBlocker> transferBlocker(const AppState& state) {
  const auto* const blocker = state.overlay.as<overlay::Blocker>();
  return blocker == nullptr ? std::nullopt : std::optional{blocker->kind};
}

std::optional<std::string> highlightedGroupID(const AppState& state) {
  return state.highlight ? std::optional{state.highlight->groupID} : std::nullopt;
}

std::optional<std::string> transferPausedReason(const AppState& state, Language language) {
  return state.pause ? std::optional{pauseText(language, *state.pause)} : std::nullopt;
}

bool isIncluded(const AppState& state, const DisplayGroup& group) {
  return state.checks->isIncluded(group.key);
}

InclusionState inclusion(const AppState& state) {
  const auto& groups = *state.visibleGroups;
  const auto included = std::count_if(groups.begin(), groups.end(),
                                      [&](const auto& group) { return isIncluded(state, *group); });
  if (included == 0) return InclusionState::none;
  return included == std::ssize(groups) ? InclusionState::all : InclusionState::some;
}

Settings withLayout(Settings settings, LayoutChoice layout) {
  switch (layout) {
    case LayoutChoice::days:
    case LayoutChoice::months:
    case LayoutChoice::years:
      settings.gathering.uiMode = UIGroupingMode::byDate;
      settings.gathering.granularity = static_cast<UIGranularity>(layout);
      break;
    case LayoutChoice::events:
      settings.gathering.uiMode = UIGroupingMode::events;
      break;
    case LayoutChoice::trips:
      settings.gathering.uiMode = UIGroupingMode::trips;
      break;
  }
  return settings;
}

std::optional<LayoutChoice> layoutOf(const Settings& settings) {
  switch (settings.gathering.uiMode) {
    case UIGroupingMode::byDate:
      return static_cast<LayoutChoice>(settings.gathering.granularity);
    case UIGroupingMode::events:
      return LayoutChoice::events;
    case UIGroupingMode::trips:
      return LayoutChoice::trips;
    case UIGroupingMode::flat:
      break;
  }
  return std::nullopt;
}

}  // namespace tavrix
