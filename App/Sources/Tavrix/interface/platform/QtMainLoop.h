#pragma once

#include <QBasicTimer>
#include <QObject>
#include <mutex>

#include "foundation/tasks/MainLoop.h"

namespace tavrix::window {

/// The main loop of a program whose main thread runs Qt's event loop. Must be created on that
/// thread. Tasks that are left when it is destroyed do not run.
class QtMainLoop : public QObject, public MainLoop {
  Q_OBJECT

 public:
  void postAfter(Duration delay, Task task) override;
  Moment now() const override { return std::chrono::steady_clock::now(); }

 protected:
  bool event(QEvent* event) override;

 private:
  void runDue();
  /// Takes the next task that is due at a moment. Returns an empty task if there is none.
  Task takeDue(Moment moment);
  /// Asks Qt to wake the loop when the next task is due.
  void arm();

  std::mutex mutex_;
  TaskQueue tasks_;
  QBasicTimer timer_;
};

}  // namespace tavrix::window
