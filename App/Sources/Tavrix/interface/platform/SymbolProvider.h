#pragma once

#include <QQuickImageProvider>

namespace tavrix::window {

/// Draws the window's symbols in any colour and size: "image://symbols/NAME/RRGGBB/RRGGBB" is the
/// file NAME.svg of the module with these colours in place of "currentColor" and "secondColor".
/// Called from any thread.
class SymbolProvider : public QQuickImageProvider {
 public:
  SymbolProvider() : QQuickImageProvider{Image} {}
  QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

}  // namespace tavrix::window
