#pragma once

#include <QtQml/qqmlregistration.h>
#include <QObject>
#include <QVariant>

#include "interface/pictures/ShownPictures.h"
#include "model/AppModel.h"

class QJSEngine;
class QQmlEngine;

namespace tavrix::window {

class WindowSession;

/// The picture that a run has copied last. It changes at most once a second.
class RunPicture : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON
  /// A ShownPictures with one file, or none.
  Q_PROPERTY(QVariant pictures READ pictures NOTIFY changed)

 public:
  explicit RunPicture(WindowSession& session);
  static RunPicture* create(QQmlEngine* engine, QJSEngine* script);

  QVariant pictures() const { return QVariant::fromValue(pictures_); }

 Q_SIGNALS:
  void changed();

 private:
  void follow(const StateChange& change);
  void show(ShownPictures pictures);

  WindowSession& session_;
  ShownPictures pictures_;
  Instant shownAt_{};
  AppModel::Subscription subscription_;
};

}  // namespace tavrix::window
