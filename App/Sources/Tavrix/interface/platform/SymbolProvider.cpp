#include "interface/platform/SymbolProvider.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace tavrix::window {

QImage SymbolProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize) {
  const QString name = id.section(QLatin1Char{'/'}, 0, 0);
  const QString color = id.section(QLatin1Char{'/'}, 1, 1);
  QFile file{QStringLiteral(":/qt/qml/Tavrix/symbols/%1.svg").arg(name)};
  if (!file.open(QIODevice::ReadOnly)) return {};
  QByteArray drawing = file.readAll();
  drawing.replace("currentColor", '#' + color.toLatin1());
  drawing.replace("secondColor", '#' + id.section(QLatin1Char{'/'}, 2, 2).toLatin1());
  QSvgRenderer renderer{drawing};
  constexpr QSize smallest{16, 16};
  QImage image{requestedSize.isEmpty() ? smallest : requestedSize,
               QImage::Format_ARGB32_Premultiplied};
  image.fill(Qt::transparent);
  QPainter painter{&image};
  renderer.render(&painter);
  if (size != nullptr) *size = image.size();
  return image;
}

}  // namespace tavrix::window
