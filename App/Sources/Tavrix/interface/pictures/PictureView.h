#pragma once

#include <QtQml/qqmlregistration.h>
#include <QPointer>
#include <QQuickPaintedItem>
#include <QVariant>
#include <vector>

#include "interface/pictures/PictureDesk.h"
#include "interface/pictures/ShownPictures.h"

namespace tavrix::window {

/// Up to five pictures as a mosaic with rounded corners, or one that is shown whole; transparent
/// where none is known yet. What no longer is shown is no longer requested.
class PictureView : public QQuickPaintedItem {
  Q_OBJECT
  QML_ELEMENT
  /// A ShownPictures; anything else while none are wanted.
  Q_PROPERTY(QVariant pictures READ pictures WRITE setPictures NOTIFY picturesChanged)
  Q_PROPERTY(qreal radius READ radius WRITE setRadius NOTIFY lookChanged)
  /// If true, the first picture is shown whole and in much detail.
  Q_PROPERTY(bool isWhole READ isWhole WRITE setWhole NOTIFY lookChanged)
  /// True if at least one picture is shown.
  Q_PROPERTY(bool isShown READ isShown NOTIFY shownChanged)

 public:
  explicit PictureView(QQuickItem* parent = nullptr);

  QVariant pictures() const { return QVariant::fromValue(pictures_); }
  void setPictures(const QVariant& pictures);
  qreal radius() const { return radius_; }
  void setRadius(qreal radius);
  bool isWhole() const { return isWhole_; }
  void setWhole(bool isWhole);
  bool isShown() const { return isShown_; }

  void paint(QPainter* painter) override;

 Q_SIGNALS:
  void picturesChanged();
  void lookChanged();
  void shownChanged();

 protected:
  void componentComplete() override;

 private:
  void load();
  void load(std::size_t index, std::uint32_t side);
  void show();

  QPointer<PictureDesk> desk_;
  ShownPictures pictures_;
  qreal radius_ = 0;
  bool isWhole_ = false;
  bool isShown_ = false;
  std::vector<QImage> images_;
  std::vector<ThumbnailRequest> requests_;
};

}  // namespace tavrix::window
