#pragma once

#include <QImage>
#include <QPainter>
#include <QRectF>
#include <vector>

namespace tavrix::window {

/// Several pictures as one, as a card shows a folder.
namespace Mosaic {

/// Returns where each of `count` pictures lies, at most five, the first one largest, with gaps of 2
/// between them. Together they fill `area`. Returns no places for an empty area.
std::vector<QRectF> places(std::size_t count, const QRectF& area);

/// Returns the largest part of a picture that has the shape of `place`, from its middle.
QRectF middleOf(const QSizeF& picture, const QSizeF& place);

/// Paints the pictures into `area`, whose corners are rounded. Leaves the place of a null picture
/// as it is.
void paint(QPainter& painter, const std::vector<QImage>& pictures, const QRectF& area,
           qreal radius);

/// Paints a picture as large as it fits into the middle of `area`.
void paintWhole(QPainter& painter, const QImage& picture, const QRectF& area);

}  // namespace Mosaic

}  // namespace tavrix::window
