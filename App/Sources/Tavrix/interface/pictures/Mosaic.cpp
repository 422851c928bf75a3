#include "interface/pictures/Mosaic.h"

#include <QPainterPath>
#include <algorithm>
#include <cmath>

namespace tavrix::window::Mosaic {
namespace {

constexpr qreal gap = 2;

/// Adds `count` places beside each other.
void addRow(std::vector<QRectF>& places, std::size_t count, const QRectF& row) {
  const auto number = static_cast<qreal>(count);
  const qreal step = (row.width() + gap) / number;
  for (std::size_t i = 0; i < count; ++i) {
    // Whole pixels, so that the gaps are equally sharp.
    const qreal left = std::round(step * static_cast<qreal>(i));
    const qreal right = std::round(step * static_cast<qreal>(i + 1)) - gap;
    places.emplace_back(row.left() + left, row.top(), right - left, row.height());
  }
}

}  // namespace

std::vector<QRectF> places(std::size_t count, const QRectF& area) {
  std::vector<QRectF> result;
  if (count == 0 || area.isEmpty()) return result;
  if (count <= 2) {
    addRow(result, count, area);
    return result;
  }
  // The upper row is higher: its one or two pictures are larger than the two or three below.
  const std::size_t above = count == 3 ? 1 : 2;
  const qreal height = std::round(area.height() * 0.58);
  addRow(result, above, {area.left(), area.top(), area.width(), height});
  addRow(result, std::min<std::size_t>(count, 5) - above,
         {area.left(), area.top() + height + gap, area.width(), area.height() - height - gap});
  return result;
}

QRectF middleOf(const QSizeF& picture, const QSizeF& place) {
  const QSizeF size = place.scaled(picture, Qt::KeepAspectRatio);
  return {(picture.width() - size.width()) / 2, (picture.height() - size.height()) / 2,
          size.width(), size.height()};
}

void paint(QPainter& painter, const std::vector<QImage>& pictures, const QRectF& area,
           qreal radius) {
  QPainterPath shape;
  shape.addRoundedRect(area, radius, radius);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
  painter.setClipPath(shape);
  const auto rectangles = places(pictures.size(), area);
  for (std::size_t i = 0; i < rectangles.size(); ++i) {
    const QImage& picture = pictures[i];
    if (picture.isNull()) continue;
    painter.drawImage(rectangles[i], picture, middleOf(picture.size(), rectangles[i].size()));
  }
}

void paintWhole(QPainter& painter, const QImage& picture, const QRectF& area) {
  if (picture.isNull()) return;
  QRectF place{{}, QSizeF{picture.size()}.scaled(area.size(), Qt::KeepAspectRatio)};
  place.moveCenter(area.center());
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawImage(place, picture);
}

}  // namespace tavrix::window::Mosaic
