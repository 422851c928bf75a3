#include "interface/session/ViewChoices.h"

#include <algorithm>

#include "interface/engine/EngineObjects.h"
#include "interface/session/WindowSession.h"

namespace tavrix::window {
namespace {

constexpr std::string_view widthKey = "inspector.width";
constexpr std::string_view yearsKey = "sidebar.years.expanded";
constexpr std::string_view placesKey = "sidebar.places.expanded";
constexpr std::string_view tipKey = "tipFoldersSeen";
constexpr std::string_view windowWidthKey = "window.width";
constexpr std::string_view windowHeightKey = "window.height";

constexpr int narrowest = 280;
constexpr int widest = 440;
constexpr int initialWidth = 304;
constexpr QSize initialWindow{1400, 900};
constexpr QSize smallestWindow{720, 480};
constexpr int largestSide = 16384;

/// Returns the length of a side of the window as it was kept, within what a screen can show.
int keptSide(const WindowSession& session, std::string_view key, int initial, int smallest) {
  return static_cast<int>(std::clamp<double>(session.kept(key, initial), smallest, largestSide));
}

}  // namespace

ViewChoices::ViewChoices(WindowSession& session)
    : session_(session),
      inspectorWidth_(static_cast<int>(
          std::clamp<double>(session.kept(widthKey, initialWidth), narrowest, widest))),
      yearsExpanded_(session.kept(yearsKey, 1) != 0),
      placesExpanded_(session.kept(placesKey, 1) != 0),
      wantsTip_(session.kept(tipKey, 0) == 0),
      windowSize_(
          keptSide(session, windowWidthKey, initialWindow.width(), smallestWindow.width()),
          keptSide(session, windowHeightKey, initialWindow.height(), smallestWindow.height())) {}

ViewChoices* ViewChoices::create(QQmlEngine* engine, QJSEngine* /*script*/) {
  return &EngineObjects::of<ViewChoices>(*engine);
}

void ViewChoices::setInspectorWidth(int width) {
  inspectorWidth_ = std::clamp(width, narrowest, widest);
  Q_EMIT changed();
}

void ViewChoices::keepInspectorWidth() { session_.keep(std::string{widthKey}, inspectorWidth_); }

void ViewChoices::setYearsExpanded(bool isExpanded) {
  yearsExpanded_ = isExpanded;
  session_.keep(std::string{yearsKey}, isExpanded ? 1 : 0);
  Q_EMIT changed();
}

void ViewChoices::setPlacesExpanded(bool isExpanded) {
  placesExpanded_ = isExpanded;
  session_.keep(std::string{placesKey}, isExpanded ? 1 : 0);
  Q_EMIT changed();
}

void ViewChoices::dismissTip() {
  wantsTip_ = false;
  session_.keep(std::string{tipKey}, 1);
  Q_EMIT changed();
}

void ViewChoices::keepWindowSize(int width, int height) {
  if (QSize{width, height} == windowSize_) return;
  session_.keep(std::string{windowWidthKey}, width);
  session_.keep(std::string{windowHeightKey}, height);
}

}  // namespace tavrix::window
