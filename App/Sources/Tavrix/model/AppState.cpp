#include "model/AppState.h"

namespace tavrix {

Settings withLayout(Settings settings, LayoutChoice layout) {
  switch (layout) {
    case LayoutChoice::days:
    case LayoutChoice::months:
    case LayoutChoice::years:
      settings.uiMode = UIGroupingMode::byDate;
      settings.granularity = static_cast<UIGranularity>(layout);
      break;
    case LayoutChoice::events:
      settings.uiMode = UIGroupingMode::events;
      break;
    case LayoutChoice::trips:
      settings.uiMode = UIGroupingMode::trips;
      break;
  }
  return settings;
}

std::optional<LayoutChoice> layoutOf(const Settings& settings) {
  switch (settings.uiMode) {
    case UIGroupingMode::byDate:
      return static_cast<LayoutChoice>(settings.granularity);
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
