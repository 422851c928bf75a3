#include "interface/shell/WindowModel.h"

#include <QUrl>
#include <filesystem>

#include "interface/engine/EngineObjects.h"
#include "interface/session/WindowSession.h"
#include "interface/words/Words.h"

namespace tavrix::window {
namespace {

/// Returns the path in an opened source, or nullopt if it is none with a path.
std::optional<std::string> pathOf(const OpenedSource& source) {
  return std::visit(
      [](const auto& kind) -> std::optional<std::string> {
        if constexpr (requires { kind.path; }) return kind.path;
        return std::nullopt;
      },
      source);
}

std::string lastNameOf(std::filesystem::path path) {
  path = path.lexically_normal();
  return path.has_filename() ? path.filename().string() : path.parent_path().filename().string();
}

}  // namespace

WindowModel::WindowModel(WindowSession& session, const Words& words)
    : session_(session),
      model_(session.model()),
      words_(words),
      subscription_(model_.subscribe([this](const StateChange& /*change*/) { Q_EMIT changed(); })) {
  connect(&session, &WindowSession::sourceChanged, this, &WindowModel::changed);
  connect(&words, &Words::languageChanged, this, &WindowModel::changed);
}

WindowModel* WindowModel::create(QQmlEngine* engine, QJSEngine* /*script*/) {
  return new WindowModel{EngineObjects::of<WindowSession>(*engine),
                         EngineObjects::of<Words>(*engine)};
}

WindowModel::Page WindowModel::page() const {
  const AppState& state = model_.state();
  if (std::holds_alternative<app_phase::Transferring>(state.phase)) return TransferPage;
  if (std::holds_alternative<app_phase::Done>(state.phase)) return SummaryPage;
  return std::holds_alternative<data_origin::None>(state.origin) ? EmptyPage : BrowsePage;
}

QString WindowModel::sourceName() const {
  if (const auto* const device = std::get_if<data_origin::Device>(&model_.state().origin)) {
    return QString::fromStdString(device->name);
  }
  const auto path = pathOf(session_.source());
  return path ? QString::fromStdString(lastNameOf(*path)) : QStringLiteral("iPhone");
}

bool WindowModel::isPhone() const { return !pathOf(session_.source()).has_value(); }

int WindowModel::layout() const {
  const auto layout = layoutOf(*model_.state().settings);
  return layout ? static_cast<int>(*layout) : -1;
}

void WindowModel::setLayout(int layout) {
  if (layout < Days || layout > Trips) return;
  model_.changeSettings(withLayout(*model_.state().settings, static_cast<LayoutChoice>(layout)));
}

QString WindowModel::searchText() const {
  return QString::fromStdString(model_.state().searchText);
}

void WindowModel::setSearchText(const QString& text) {
  if (text != searchText()) model_.search(text.toStdString());
}

bool WindowModel::isComputing() const { return model_.state().isComputing; }

void WindowModel::openSource(const QString& source) {
  const QUrl url{source};
  session_.open(url.isLocalFile() ? url.toLocalFile().toStdString() : source.toStdString());
}

void WindowModel::openPhone() { session_.open("phone"); }

void WindowModel::goBack() {
  const AppState& state = model_.state();
  if (!state.overlay.is<overlay::None>()) {
    model_.closeOverlay();
  } else if (std::holds_alternative<app_phase::Done>(state.phase)) {
    model_.leaveSummary();
  }
}

}  // namespace tavrix::window
