#include <QtQml/qqmlextensionplugin.h>
#include <QDir>
#include <QGuiApplication>
#include <QIcon>
#include <QQmlApplicationEngine>
#include <QQuickStyle>
#include <QQuickWindow>
#include <chrono>
#include <cstdio>

#include "foundation/ProcessLimits.h"
#include "foundation/Text.h"
#include "foundation/TimeZone.h"
#include "interface/engine/EngineObjects.h"
#include "interface/pictures/PictureDesk.h"
#include "interface/platform/Appearance.h"
#include "interface/platform/QtMainLoop.h"
#include "interface/platform/Rendering.h"
#include "interface/platform/SymbolProvider.h"
#include "interface/session/ViewChoices.h"
#include "interface/session/WindowSession.h"
#include "interface/shell/Picture.h"
#include "interface/shell/RunAttendant.h"
#include "interface/shell/ScreensFolder.h"
#include "interface/shell/WindowArguments.h"
#include "interface/words/Words.h"
#include "services/SleepInhibitor.h"
#include "services/platform/Resources.h"
#include "settings/InterfaceLanguage.h"

Q_IMPORT_QML_PLUGIN(TavrixPlugin)

namespace tavrix::window {
namespace {

Instant systemNow() {
  return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
}

/// Opens the window, and returns the status of the program when it is closed.
int runWindow(const WindowArguments& arguments, Language language, const Environment& environment,
              UserDefaults* defaults) {
  QtMainLoop loop;
  std::optional<Stage> stage;
  if (arguments.state) stage.emplace(*arguments.state);
  const auto phones = stage ? nullptr : Phones::openBrowser();
  const auto bus = stage ? nullptr : openUSBBus();
  std::function<MainLoop::Moment()> paceClock;
  if (stage) paceClock = [&stage] { return stage->paceMoment(); };
  WindowSession session{{.loop = loop,
                         .environment = environment,
                         .defaults = defaults,
                         .language = language,
                         .systemLocaleID = systemLocaleID(),
                         .systemTimeZoneID = systemTimeZoneID(),
                         .gazetteerPath = resourcePath("gazetteer.bin"),
                         .conversionProgram = helperPath("tavrix-convert"),
                         .now = [&stage] { return stage ? stage->now() : systemNow(); },
                         .newID = randomUuid,
                         .paceClock = paceClock,
                         .phones = phones.get(),
                         .bus = bus.get()}};
  PictureDesk pictures{session};
  Words words{language};
  Appearance appearance{QDBusConnection::sessionBus()};
  RunAttendant attendant{session, words, openSleepInhibitor()};
  appearance.setDark(arguments.isDark);
  ViewChoices view{session};
  if (arguments.picture) appearance.setMotion(false);

  std::optional<ScreensFolder> screens;
  QQmlApplicationEngine engine;
  if (arguments.screens) {
    screens.emplace(QString::fromStdString(*arguments.screens));
    engine.addUrlInterceptor(&*screens);
  }
  engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
  engine.addImageProvider(QStringLiteral("symbols"), new SymbolProvider);
  EngineObjects::give(engine, session);
  EngineObjects::give(engine, pictures);
  EngineObjects::give(engine, words);
  EngineObjects::give(engine, appearance);
  EngineObjects::give(engine, view);
  engine.load(QUrl{QStringLiteral("qrc:/qt/qml/Tavrix/Main.qml")});
  if (engine.rootObjects().isEmpty()) return 1;
  auto* const window = qobject_cast<QQuickWindow*>(engine.rootObjects().constFirst());
  if (arguments.size) window->resize(*arguments.size);

  if (arguments.endsAtFirstFrame) {
    QObject::connect(window, &QQuickWindow::frameSwapped, qApp, &QCoreApplication::quit,
                     Qt::QueuedConnection);
  }
  if (arguments.destination) session.model().setDestination(arguments.destination);
  const auto demo = variable(environment, "DEMO_DIR");
  session.open(arguments.source.value_or(demo.value_or("phone")));
  std::optional<Picture> picture;
  if (arguments.picture) {
    picture.emplace(*window, session, pictures, stage ? &*stage : nullptr, arguments);
  }
  return QGuiApplication::exec();
}

int run(int argc, char** argv) {
  reportFileSizeLimit();
  const Environment environment = processEnvironment();
  const auto defaults = openDefaults(environment);
  const std::string chosen = keptLanguage(defaults.get()).value_or(std::string{initialLanguage});
  const auto read = readArguments({argv + 1, argv + argc});
  const auto* const arguments = std::get_if<WindowArguments>(&read);
  Language language = languageOfChoice(chosen, systemMessagesLocaleID());
  if (arguments == nullptr) {
    const std::string text = printable(std::get<UnknownArgument>(read).text);
    std::fprintf(stderr, "%s\n", say(language, sentences::unknownArgument, text).c_str());
    return 2;
  }
  language = arguments->language.value_or(language);
  if (arguments->wantsHelp) return std::fputs(say(language, sentences::usage).c_str(), stdout) < 0;
  if (arguments->wantsVersion) return std::puts("Tavrix " TAVRIX_VERSION) < 0;

  QGuiApplication::setApplicationName(QStringLiteral("tavrix-window"));
  QGuiApplication::setDesktopFileName(QStringLiteral("tavrix-window"));
  const QGuiApplication application{argc, argv};
  QGuiApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("tavrix")));
  chooseRenderer();
  QQuickStyle::setStyle(QStringLiteral("Basic"));
  return runWindow(*arguments, language, environment, defaults.get());
}

}  // namespace
}  // namespace tavrix::window

int main(int argc, char** argv) { return tavrix::window::run(argc, argv); }
