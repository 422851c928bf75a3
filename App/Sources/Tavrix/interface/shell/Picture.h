#pragma once

#include <QObject>
#include <QQuickWindow>
#include <QTimer>
#include <string>
#include <vector>

#include "interface/pictures/PictureDesk.h"
#include "interface/session/WindowSession.h"
#include "interface/shell/WindowArguments.h"
#include "interface/stage/Stage.h"

namespace tavrix::window {

/// Paints the window into a file once it is up to date with its source, and ends the program. The
/// window is brought into the state of the stage first. The actions are statements of QML, carried
/// out one after another in the context of the window. With a delay, the picture shows what is
/// under way after it.
class Picture : public QObject {
  Q_OBJECT

 public:
  /// `stage` may be null.
  Picture(QQuickWindow& window, WindowSession& session, const PictureDesk& thumbnails, Stage* stage,
          const WindowArguments& arguments);

 private:
  void look();
  void take();
  bool isSettled();
  void carryOut(const std::string& action);

  QQuickWindow& window_;
  WindowSession& session_;
  const PictureDesk& thumbnails_;
  Stage* stage_;
  bool isEntered_ = false;
  std::vector<std::string> actions_;
  std::string path_;
  std::chrono::milliseconds delay_;  ///< between the last action and the painting
  std::size_t done_ = 0;             ///< how many actions were carried out
  int calmLooks_ = 0;
  std::optional<TransferProgressSnapshot> progress_;  ///< at the last look
  QTimer timer_;
};

}  // namespace tavrix::window
