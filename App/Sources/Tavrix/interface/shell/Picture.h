#pragma once

#include <QObject>
#include <QQuickWindow>
#include <QTimer>
#include <string>
#include <vector>

#include "interface/pictures/PictureDesk.h"
#include "interface/session/WindowSession.h"

namespace tavrix::window {

/// Paints the window into a file once it is up to date with its source, and ends the program. The
/// actions are statements of QML, carried out one after another in the context of the window. With
/// a delay, the picture shows what is under way after it.
class Picture : public QObject {
  Q_OBJECT

 public:
  Picture(QQuickWindow& window, WindowSession& session, const PictureDesk& thumbnails,
          std::vector<std::string> actions, std::string path, std::chrono::milliseconds delay);

 private:
  void look();
  void take();
  bool isSettled() const;
  void carryOut(const std::string& action);

  QQuickWindow& window_;
  WindowSession& session_;
  const PictureDesk& thumbnails_;
  std::vector<std::string> actions_;
  std::string path_;
  std::chrono::milliseconds delay_;  ///< between the last action and the painting
  std::size_t done_ = 0;             ///< how many actions were carried out
  int calmLooks_ = 0;
  QTimer timer_;
};

}  // namespace tavrix::window
