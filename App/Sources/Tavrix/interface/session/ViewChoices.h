#pragma once

#include <QtQml/qqmlregistration.h>
#include <QObject>
#include <QSize>

class QJSEngine;
class QQmlEngine;

namespace tavrix::window {

class WindowSession;

/// The choices about the window itself that the user's defaults keep (docs/defaults.md).
class ViewChoices : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON
  /// In pixels, within its bounds.
  Q_PROPERTY(int inspectorWidth READ inspectorWidth WRITE setInspectorWidth NOTIFY changed)
  Q_PROPERTY(bool yearsExpanded READ yearsExpanded WRITE setYearsExpanded NOTIFY changed)
  Q_PROPERTY(bool placesExpanded READ placesExpanded WRITE setPlacesExpanded NOTIFY changed)
  /// True until the user has dismissed the tip about folders.
  Q_PROPERTY(bool wantsTip READ wantsTip NOTIFY changed)
  /// The size of the window when it was last closed.
  Q_PROPERTY(QSize windowSize READ windowSize CONSTANT)

 public:
  explicit ViewChoices(WindowSession& session);
  /// Returns the choices that the engine was given.
  static ViewChoices* create(QQmlEngine* engine, QJSEngine* script);

  int inspectorWidth() const { return inspectorWidth_; }
  void setInspectorWidth(int width);
  bool yearsExpanded() const { return yearsExpanded_; }
  void setYearsExpanded(bool isExpanded);
  bool placesExpanded() const { return placesExpanded_; }
  void setPlacesExpanded(bool isExpanded);
  bool wantsTip() const { return wantsTip_; }
  Q_INVOKABLE void dismissTip();
  QSize windowSize() const { return windowSize_; }
  Q_INVOKABLE void keepWindowSize(int width, int height);
  /// Keeps the width of the inspector; called when the user has finished dragging.
  Q_INVOKABLE void keepInspectorWidth();

 Q_SIGNALS:
  void changed();

 private:
  WindowSession& session_;
  int inspectorWidth_;
  bool yearsExpanded_;
  bool placesExpanded_;
  bool wantsTip_;
  QSize windowSize_;
};

}  // namespace tavrix::window
