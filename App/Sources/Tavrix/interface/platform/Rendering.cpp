#include "interface/platform/Rendering.h"

#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QQuickWindow>

namespace tavrix::window {
namespace {

/// Returns true if drawing with OpenGL would be done by graphics hardware.
bool hasHardware() {
  QOffscreenSurface surface;
  surface.create();
  QOpenGLContext context;
  if (!surface.isValid() || !context.create() || !context.makeCurrent(&surface)) return false;
  const auto* const text =
      reinterpret_cast<const char*>(context.functions()->glGetString(GL_RENDERER));
  const QByteArray renderer = QByteArray{text}.toLower();
  context.doneCurrent();
  return !renderer.isEmpty() && !renderer.contains("llvmpipe") && !renderer.contains("softpipe") &&
         !renderer.contains("swrast");
}

}  // namespace

void chooseRenderer() {
  if (qEnvironmentVariableIsSet("QT_QUICK_BACKEND") || qEnvironmentVariableIsSet("QSG_RHI_BACKEND"))
    return;
  if (!hasHardware()) QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
}

}  // namespace tavrix::window
