#include "interface/pictures/PictureView.h"

#include <QQmlEngine>
#include <algorithm>

#include "interface/engine/EngineObjects.h"
#include "interface/pictures/Mosaic.h"

namespace tavrix::window {
namespace {

/// The longest side of a picture that fills the window.
constexpr std::uint32_t wholeSide = 2560;

}  // namespace

PictureView::PictureView(QQuickItem* parent) : QQuickPaintedItem{parent} {
  setOpaquePainting(false);
}

void PictureView::componentComplete() {
  QQuickPaintedItem::componentComplete();
  desk_ = &EngineObjects::of<PictureDesk>(*qmlEngine(this));
  load();
}

void PictureView::setPictures(const QVariant& pictures) {
  auto next = pictures.value<ShownPictures>();
  if (next == pictures_) return;
  pictures_ = std::move(next);
  Q_EMIT picturesChanged();
  load();
}

void PictureView::setRadius(qreal radius) {
  if (std::exchange(radius_, radius) == radius) return;
  Q_EMIT lookChanged();
  update();
}

void PictureView::setWhole(bool isWhole) {
  if (std::exchange(isWhole_, isWhole) == isWhole) return;
  Q_EMIT lookChanged();
  load();
}

void PictureView::load() {
  requests_.clear();
  images_.assign(pictures_.assets.size(), {});
  // One or two pictures fill a card, and are cut to its shape.
  const std::uint32_t side =
      images_.size() <= 2 && width() > 200 ? 2 * thumbnailSide : thumbnailSide;
  for (std::size_t i = 0; desk_ != nullptr && i < images_.size(); ++i) {
    load(i, isWhole_ ? wholeSide : side);
  }
  show();
}

void PictureView::load(std::size_t index, std::uint32_t side) {
  const MediaAsset& asset = pictures_.assets[index];
  images_[index] = desk_->known(asset, side);
  if (!images_[index].isNull()) return;
  // A large picture takes a while; until then the small one is shown.
  if (isWhole_) images_[index] = desk_->known(asset, thumbnailSide);
  requests_.push_back(desk_->request(asset, side, [this, index](const QImage& image) {
    images_[index] = image;
    show();
  }));
}

void PictureView::show() {
  const bool isShown =
      std::any_of(images_.begin(), images_.end(), [](const QImage& p) { return !p.isNull(); });
  if (std::exchange(isShown_, isShown) != isShown) Q_EMIT shownChanged();
  update();
}

void PictureView::paint(QPainter* painter) {
  if (isWhole_ && !images_.empty())
    return Mosaic::paintWhole(*painter, images_.front(), boundingRect());
  Mosaic::paint(*painter, images_, boundingRect(), radius_);
}

}  // namespace tavrix::window
