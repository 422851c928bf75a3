#pragma once

#include <QtQml/qqmlregistration.h>
#include <QPointer>
#include <QQuickPaintedItem>
#include <QString>
#include <vector>

#include "interface/pictures/PictureDesk.h"

namespace tavrix::window {

/// Up to five pictures of a folder, with rounded corners; transparent where none is known yet. What
/// no longer is shown is no longer requested.
class FolderPictures : public QQuickPaintedItem {
  Q_OBJECT
  QML_ELEMENT
  /// The folder and its pictures, as FolderListModel gives them; empty while none are wanted.
  Q_PROPERTY(QString strip READ strip WRITE setStrip NOTIFY stripChanged)
  Q_PROPERTY(qreal radius READ radius WRITE setRadius NOTIFY stripChanged)
  /// True if at least one picture is shown.
  Q_PROPERTY(bool isShown READ isShown NOTIFY shownChanged)

 public:
  explicit FolderPictures(QQuickItem* parent = nullptr);

  QString strip() const { return strip_; }
  void setStrip(const QString& strip);
  qreal radius() const { return radius_; }
  void setRadius(qreal radius);
  bool isShown() const { return isShown_; }

  void paint(QPainter* painter) override;

 Q_SIGNALS:
  void stripChanged();
  void shownChanged();

 protected:
  void componentComplete() override;

 private:
  void load();
  void show();

  QPointer<PictureDesk> desk_;
  QString strip_;
  qreal radius_ = 0;
  bool isShown_ = false;
  std::vector<QImage> pictures_;
  std::vector<ThumbnailRequest> requests_;
};

}  // namespace tavrix::window
