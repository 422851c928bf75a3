#pragma once

#include <QtQml/qqmlregistration.h>
#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>
#include <optional>

class QJSEngine;
class QQmlEngine;

namespace tavrix::window {

/// The look of the window, light or dark, and its motion: as the desktop says, or as chosen.
class Appearance : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON
  Q_PROPERTY(bool isDark READ isDark NOTIFY changed)
  Q_PROPERTY(bool hasMotion READ hasMotion NOTIFY changed)

 public:
  /// Follows the desktop, if a service on the bus says how it looks.
  explicit Appearance(QDBusConnection bus);
  /// Returns the appearance that the engine was given.
  static Appearance* create(QQmlEngine* engine, QJSEngine* script);

  bool isDark() const { return chosen_.value_or(isDesktopDark_); }
  /// Returns false if nothing may be animated.
  bool hasMotion() const { return hasMotion_; }
  /// Sets the look; nullopt follows the desktop.
  void setDark(std::optional<bool> isDark);
  void setMotion(bool hasMotion);

 Q_SIGNALS:
  void changed();

 private:
  Q_SLOT void settingChanged(const QString& area, const QString& key, const QDBusVariant& value);
  void setScheme(unsigned int scheme);

  bool isDesktopDark_ = false;
  bool hasMotion_ = true;
  std::optional<bool> chosen_;
};

}  // namespace tavrix::window
