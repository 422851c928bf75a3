// The window over a large library, drawn in software: its start, its frames while it scrolls, its
// memory, the time from a new display to its picture, and its rest.

#include <QtQml/qqmlextensionplugin.h>
#include <fmt/format.h>
#include <malloc.h>

#include <QEventLoop>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QTimer>
#include <algorithm>
#include <ctime>
#include <filesystem>
#include <fstream>

#include "Benches.h"
#include "Measure.h"
#include "SyntheticLibrary.h"
#include "interface/engine/EngineObjects.h"
#include "interface/pictures/PictureDesk.h"
#include "interface/platform/Appearance.h"
#include "interface/platform/QtMainLoop.h"
#include "interface/platform/SymbolProvider.h"
#include "interface/session/ViewChoices.h"
#include "interface/session/WindowSession.h"
#include "interface/words/Words.h"

Q_IMPORT_QML_PLUGIN(TavrixPlugin)

namespace tavrix::bench {
namespace {

using namespace tavrix::window;

constexpr double megabyte = 1 << 20U;

/// Runs Qt's loop until `isDone()` returns true.
void runUntil(const std::function<bool()>& isDone) {
  while (!isDone()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
}

void runFor(std::chrono::milliseconds time) {
  QEventLoop loop;
  QTimer::singleShot(time, &loop, &QEventLoop::quit);
  loop.exec();
}

/// Returns the resident memory of this process that is no file, in bytes.
double anonymousMemory() {
  malloc_trim(0);
  std::ifstream status{"/proc/self/status"};
  for (std::string word; status >> word;) {
    double kilobytes = 0;
    if (word == "RssAnon:" && status >> kilobytes) return kilobytes * 1024;
  }
  return 0;
}

double secondsOn(clockid_t clock) {
  timespec time{};
  clock_gettime(clock, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

/// Files that are never opened.
struct NoFiles : SourceFiles {
  std::unique_ptr<MediaSource> openMedia(AwaitPhone, std::stop_token) const override {
    return nullptr;
  }
};

/// A model with many folders, and the window over it once it is opened.
class Opened {
 public:
  Opened() {
    session.model().sourceReady(
        {.deviceName = "iPhone",
         .phone = snapshotPhone("iPhone"),
         .assets = travels({.shots = 200'000, .events = 20'000, .trips = 300, .places = 2000}),
         .files = std::make_shared<NoFiles>()},
        data_origin::Snapshot{});
    settle();
  }

  void settle() {
    runUntil([&] { return session.model().isSettled(); });
  }
  void open() {
    appearance.setMotion(false);
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    engine.addImageProvider(QStringLiteral("symbols"), new SymbolProvider);
    EngineObjects::give(engine, session);
    EngineObjects::give(engine, pictures);
    EngineObjects::give(engine, view);
    EngineObjects::give(engine, words);
    EngineObjects::give(engine, appearance);
    engine.load(QUrl{QStringLiteral("qrc:/qt/qml/Tavrix/Main.qml")});
    window = qobject_cast<QQuickWindow*>(engine.rootObjects().constFirst());
    QObject::connect(window, &QQuickWindow::frameSwapped, [&] { ++frames; });
    runUntil([&] { return frames > 0; });
    runFor(std::chrono::milliseconds{500});
  }

  QtMainLoop loop;
  WindowSession session{{.loop = loop,
                         .now = [] { return Instant{std::chrono::hours{24 * 20700}}; },
                         .newID = randomUuid}};
  PictureDesk pictures{session};
  ViewChoices view{session};
  Words words{Language::russian};
  Appearance appearance{QDBusConnection{QStringLiteral("none")}};
  QQmlApplicationEngine engine;
  QQuickWindow* window = nullptr;
  std::size_t frames = 0;  ///< drawn so far
};

void printTime(const std::string& what, double ours, double allowed) {
  print(
      {fmt::format("{} : {}", what, time(allowed)), time(ours), time(allowed), ours / allowed, 1});
}

/// Returns the Flickable of the folders, the tallest in the window.
QQuickItem* listIn(QQuickItem& item) {
  QQuickItem* tallest = item.inherits("QQuickFlickable") ? &item : nullptr;
  const auto height = [](const QQuickItem* flickable) {
    return flickable == nullptr ? 0.0 : flickable->property("contentHeight").toReal();
  };
  for (QQuickItem* const child : item.childItems()) {
    QQuickItem* const found = listIn(*child);
    if (height(found) > height(tallest)) tallest = found;
  }
  return tallest;
}

void benchScrolling(Opened& opened, QSize size, double allowed) {
  constexpr int framesOfSpeed = 120;
  opened.window->resize(size);
  runFor(std::chrono::milliseconds{300});
  QQuickItem& list = *listIn(*opened.window->contentItem());
  std::vector<double> works;
  double top = 0;
  for (const double step : {8.0, 90.0, 900.0, 20'000.0}) {
    for (int i = 0; i < framesOfSpeed; ++i) {
      const std::size_t before = opened.frames;
      // The loop draws in this thread; the time that it waits for the next frame is not work.
      const double begin = secondsOn(CLOCK_THREAD_CPUTIME_ID);
      list.setProperty("contentY", top += step);
      runUntil([&] { return opened.frames > before; });
      works.push_back(secondsOn(CLOCK_THREAD_CPUTIME_ID) - begin);
    }
  }
  std::ranges::sort(works);
  printTime(fmt::format("frame while scrolling, p95, {} x {}", size.width(), size.height()),
            works[works.size() * 95 / 100], allowed);
}

void benchDisplay(Opened& opened) {
  double longest = 0;
  for (const char* const text : {"2015", ""}) {
    double begin = 0;
    const auto now = [] { return secondsOn(CLOCK_MONOTONIC); };
    const auto subscription = opened.session.model().subscribe([&](const StateChange& change) {
      if (begin == 0 && change.has(StateTopic::rows)) begin = now();
    });
    opened.session.model().search(text);
    runUntil([&] { return begin > 0; });
    const std::size_t frames = opened.frames;
    runUntil([&] { return opened.frames > frames; });
    longest = std::max(longest, now() - begin);
    opened.settle();
    runFor(std::chrono::milliseconds{300});
  }
  printTime("new display to its picture", longest, 0.030);
}

void benchRest(Opened& opened) {
  runFor(std::chrono::seconds{1});
  const std::size_t frames = opened.frames;
  const double busy = secondsOn(CLOCK_PROCESS_CPUTIME_ID);
  constexpr int rest = 5;
  runFor(std::chrono::seconds{rest});
  const auto drawn = static_cast<double>(opened.frames - frames);
  print({"frames of a window at rest : 0", fmt::format("{}", drawn), "0", drawn, 0});
  printTime("a second of rest: time of the processor",
            (secondsOn(CLOCK_PROCESS_CPUTIME_ID) - busy) / rest, 0.005);
}

/// Runs the program until it has drawn its first frame.
void benchFirstFrame(const std::string& folder) {
  std::filesystem::create_directories(folder);
  const std::string command = "XDG_RUNTIME_DIR=" + folder + " HOME=" + folder +
                              " " TAVRIX_WINDOW_PROGRAM " --state plain --first-frame 2>/dev/null";
  double best = 1e9;
  for (int i = 0; i < 7; ++i) best = std::min(best, seconds([&] { shell(command); }));
  printTime("program start to the first frame", best, 0.5);
}

}  // namespace

void benchWindow(const std::string& folder) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_QUICK_BACKEND", "software");
  benchFirstFrame(folder);
  int count = 1;
  char name[] = "bench";
  char* names[] = {name, nullptr};
  const QGuiApplication application{count, names};
  QQuickStyle::setStyle(QStringLiteral("Basic"));
  Opened opened;
  fmt::print("{} folders:\n", opened.session.model().state().visibleGroups->size());
  const double before = anonymousMemory();
  opened.open();
  benchScrolling(opened, {1400, 900}, 0.008);
  benchScrolling(opened, {2800, 1800}, 0.016);
  opened.window->resize({1400, 900});
  runFor(std::chrono::milliseconds{300});
  const double added = (anonymousMemory() - before) / megabyte;
  print({"memory above the model's : 110 MiB", fmt::format("{:.0f} MiB", added), "110 MiB",
         added / 110, 1});
  benchDisplay(opened);
  benchRest(opened);
}

}  // namespace tavrix::bench
