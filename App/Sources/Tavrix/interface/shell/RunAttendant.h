#pragma once

#include <QObject>
#include <memory>

#include "foundation/tasks/MainLoop.h"
#include "model/AppModel.h"
#include "services/SleepInhibitor.h"

namespace tavrix::window {

class WindowSession;
class Words;

/// Reports long work to the desktop: the computer stays awake while a source is read and files
/// are copied, the task bar shows the progress, and a notification reports the end of a run if no
/// window is in front.
class RunAttendant : public QObject {
  Q_OBJECT

 public:
  /// `inhibitor` may be null.
  RunAttendant(WindowSession& session, const Words& words,
               std::unique_ptr<SleepInhibitor> inhibitor);

 private:
  void follow(const StateChange& change);
  void stayAwake();
  void showProgress(const AppState& state);
  void reportEnd();

  WindowSession& session_;
  AppModel& model_;
  const Words& words_;
  std::unique_ptr<SleepInhibitor> inhibitor_;
  std::optional<MainLoop::Moment> shownAt_;  ///< when the task bar was last told
  AppModel::Subscription subscription_;
};

}  // namespace tavrix::window
