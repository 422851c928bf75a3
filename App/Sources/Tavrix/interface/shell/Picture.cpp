#include "interface/shell/Picture.h"

#include <QCoreApplication>
#include <QImage>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <cstdio>

namespace tavrix::window {

Picture::Picture(QQuickWindow& window, WindowSession& session, const PictureDesk& thumbnails,
                 Stage* stage, const WindowArguments& arguments)
    : window_(window),
      session_(session),
      thumbnails_(thumbnails),
      stage_(stage),
      actions_(arguments.actions),
      path_(arguments.picture.value()),
      delay_(arguments.delay) {
  connect(&timer_, &QTimer::timeout, this, &Picture::look);
  timer_.start(std::chrono::milliseconds{20});
}

bool Picture::isSettled() {
  const bool hasMoved = std::exchange(progress_, session_.model().state().progress) !=
                        session_.model().state().progress;
  if (hasMoved || (isEntered_ && !stage_->proceed())) return false;
  return !std::holds_alternative<opened_source::Reading>(session_.source()) &&
         session_.model().isSettled() && !session_.model().state().isComputing &&
         thumbnails_.isCalm();
}

void Picture::look() {
  constexpr int enough = 10;
  calmLooks_ = isSettled() ? calmLooks_ + 1 : 0;
  if (calmLooks_ < enough) return;
  if (stage_ != nullptr && !isEntered_) {
    isEntered_ = true;
    calmLooks_ = 0;
    return stage_->enter(session_);
  }
  if (done_ < actions_.size()) {
    calmLooks_ = 0;
    return carryOut(actions_[done_++]);
  }
  timer_.stop();
  QTimer::singleShot(delay_, this, &Picture::take);
}

void Picture::take() {
  const bool isWritten = window_.grabWindow().save(QString::fromStdString(path_));
  QCoreApplication::exit(isWritten ? 0 : 1);
}

void Picture::carryOut(const std::string& action) {
  QQmlContext* const context = QQmlEngine::contextForObject(&window_);
  QQmlComponent component{context->engine()};
  component.setData("import QtQuick\nimport Tavrix\nQtObject { function run() { " +
                        QByteArray::fromStdString(action) + " } }",
                    QUrl{});
  const std::unique_ptr<QObject> object{component.create(context)};
  if (object) {
    QMetaObject::invokeMethod(object.get(), "run");
  } else {
    std::fprintf(stderr, "%s\n", qPrintable(component.errorString()));
  }
}

}  // namespace tavrix::window
