#include "interface/pictures/FolderPictures.h"

#include <QQmlEngine>
#include <algorithm>

#include "interface/engine/EngineObjects.h"
#include "interface/pictures/Mosaic.h"

namespace tavrix::window {

FolderPictures::FolderPictures(QQuickItem* parent) : QQuickPaintedItem{parent} {
  setOpaquePainting(false);
}

void FolderPictures::componentComplete() {
  QQuickPaintedItem::componentComplete();
  desk_ = &EngineObjects::of<PictureDesk>(*qmlEngine(this));
  load();
}

void FolderPictures::setStrip(const QString& strip) {
  if (strip == strip_) return;
  strip_ = strip;
  Q_EMIT stripChanged();
  load();
}

void FolderPictures::setRadius(qreal radius) {
  if (radius == radius_) return;
  radius_ = radius;
  Q_EMIT stripChanged();
  update();
}

void FolderPictures::load() {
  requests_.clear();
  pictures_.clear();
  if (desk_ != nullptr && !strip_.isEmpty()) {
    const auto faces = desk_->facesOf(strip_.section(u'-', 0, 0).toUInt());
    // One or two pictures fill the card, and are cut to its shape.
    const std::uint32_t side = faces.size() <= 2 ? 2 * thumbnailSide : thumbnailSide;
    pictures_.resize(faces.size());
    for (std::size_t i = 0; i < faces.size(); ++i) {
      pictures_[i] = desk_->known(faces[i], side);
      if (!pictures_[i].isNull()) continue;
      requests_.push_back(desk_->request(faces[i], side, [this, i](const QImage& image) {
        pictures_[i] = image;
        show();
      }));
    }
  }
  show();
}

void FolderPictures::show() {
  const bool isShown =
      std::any_of(pictures_.begin(), pictures_.end(), [](const QImage& p) { return !p.isNull(); });
  if (isShown != isShown_) {
    isShown_ = isShown;
    Q_EMIT shownChanged();
  }
  update();
}

void FolderPictures::paint(QPainter* painter) {
  Mosaic::paint(*painter, pictures_, boundingRect(), radius_);
}

}  // namespace tavrix::window
