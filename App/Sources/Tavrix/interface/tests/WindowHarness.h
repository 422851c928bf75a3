#pragma once

#include <gmock/gmock.h>

#include <QQmlApplicationEngine>
#include <QQuickWindow>

#include "interface/engine/EngineObjects.h"
#include "interface/pictures/PictureDesk.h"
#include "interface/platform/Appearance.h"
#include "interface/platform/SymbolProvider.h"
#include "interface/session/ViewChoices.h"
#include "interface/session/WindowSession.h"
#include "interface/words/Words.h"
#include "model/tests/support/ModelHarness.h"

namespace tavrix::window {

/// A session on a loop of the test, and the window over it if the test opens one.
class WindowHarness {
 public:
  explicit WindowHarness(int files, Language language = Language::russian)
      : phone{files}, words{language} {
    session.model().sourceReady(phone.source(), data_origin::Snapshot{});
    settle();
  }

  /// Runs the loop until the model is up to date.
  void settle() {
    ASSERT_TRUE(loop.runUntil([&] { return session.model().isSettled(); }));
    loop.runDue();
  }
  /// Opens the window.
  QQuickWindow& open(QSize size) {
    appearance.setMotion(false);
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    engine.addImageProvider(QStringLiteral("symbols"), new SymbolProvider);
    EngineObjects::give(engine, session);
    EngineObjects::give(engine, pictures);
    EngineObjects::give(engine, view);
    EngineObjects::give(engine, words);
    EngineObjects::give(engine, appearance);
    engine.load(QUrl{QStringLiteral("qrc:/qt/qml/Tavrix/Main.qml")});
    auto& window = *qobject_cast<QQuickWindow*>(engine.rootObjects().constFirst());
    window.resize(size);
    return window;
  }

 private:
  std::unique_ptr<Folder> filling(std::unique_ptr<Folder> folder) {
    if (folder == nullptr) return nullptr;
    auto faulty = std::make_unique<FaultyFolder>(std::move(folder));
    faulty->faults().rule = [this](FileOperation operation, const std::string& path) {
      if (operation != FileOperation::write || path.starts_with("phone-")) return;
      if (writesUntilFull == 0) throw FileError{operation, path, ENOSPC};
      if (writesUntilFull > 0) --writesUntilFull;
    };
    faulty->faults().freeBytes = [this]() -> std::uint64_t {
      return writesUntilFull == 0 ? 3 : 1'000'000;
    };
    return faulty;
  }

 public:
  /// The number of writes of pictures until the volume of the destination is full; negative: never.
  std::atomic<int> writesUntilFull = -1;
  ManualMainLoop loop;
  FakePhone phone;
  WindowSession session{{.loop = loop,
                         .now = [] { return Instant{std::chrono::hours{24 * 20700}}; },
                         .newID = randomUuid,
                         .destinations = {.openForWriting =
                                              [this](const std::string& path) {
                                                return filling(Destination::openForWriting(path));
                                              },
                                          .openRequiredForWriting =
                                              [this](const std::string& path) {
                                                return filling(
                                                    Destination::openRequiredForWriting(path));
                                              },
                                          .openExisting =
                                              [this](const std::string& path) {
                                                return filling(Destination::openExisting(path));
                                              }}}};
  PictureDesk pictures{session};
  ViewChoices view{session};
  Words words;
  Appearance appearance{QDBusConnection{QStringLiteral("none")}};
  QQmlApplicationEngine engine;
};

}  // namespace tavrix::window
