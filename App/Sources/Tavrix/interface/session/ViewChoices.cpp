#include "interface/session/ViewChoices.h"

#include <algorithm>
#include <cmath>

#include "interface/engine/EngineObjects.h"
#include "interface/session/WindowSession.h"

namespace tavrix::window {
namespace {

constexpr std::string_view widthKey = "inspector.width";
constexpr std::string_view yearsKey = "sidebar.years.expanded";
constexpr std::string_view placesKey = "sidebar.places.expanded";

constexpr int narrowest = 280;
constexpr int widest = 440;
constexpr int initialWidth = 304;

/// Returns the number that is kept under a key, or another one if there is none.
double kept(const WindowSession& session, std::string_view key, double other) {
  const UserDefaults* const defaults = session.surroundings().defaults;
  if (defaults == nullptr) return other;
  const auto object = defaults->object(key);
  if (!object) return other;
  if (const bool* const flag = object->asBool()) return *flag ? 1 : 0;
  const auto number = object->asNumber();
  return number && std::isfinite(*number) ? *number : other;
}

}  // namespace

ViewChoices::ViewChoices(WindowSession& session)
    : session_(session),
      inspectorWidth_(static_cast<int>(
          std::clamp<double>(kept(session, widthKey, initialWidth), narrowest, widest))),
      yearsExpanded_(kept(session, yearsKey, 1) != 0),
      placesExpanded_(kept(session, placesKey, 1) != 0) {}

ViewChoices* ViewChoices::create(QQmlEngine* engine, QJSEngine* /*script*/) {
  return &EngineObjects::of<ViewChoices>(*engine);
}

void ViewChoices::setInspectorWidth(int width) {
  inspectorWidth_ = std::clamp(width, narrowest, widest);
  Q_EMIT changed();
}

void ViewChoices::keepInspectorWidth() {
  session_.keep(std::string{widthKey}, JsonValue{1.0 * inspectorWidth_});
}

void ViewChoices::setYearsExpanded(bool isExpanded) {
  yearsExpanded_ = isExpanded;
  session_.keep(std::string{yearsKey}, JsonValue{isExpanded ? 1.0 : 0.0});
  Q_EMIT changed();
}

void ViewChoices::setPlacesExpanded(bool isExpanded) {
  placesExpanded_ = isExpanded;
  session_.keep(std::string{placesKey}, JsonValue{isExpanded ? 1.0 : 0.0});
  Q_EMIT changed();
}

}  // namespace tavrix::window
