#pragma once

#include <QByteArray>
#include <QQmlEngine>
#include <QVariant>

namespace tavrix::window {

/// The objects that all adapters of one QML engine share, by their type. An engine has at most one
/// object of a type. The engine does not own them.
namespace EngineObjects {

template <typename T>
QByteArray nameOf() {
  return QByteArray{"tavrix:"} + T::staticMetaObject.className();
}

/// Makes `object` known to an engine; it must outlive the engine.
template <typename T>
void give(QQmlEngine& engine, T& object) {
  QQmlEngine::setObjectOwnership(&object, QQmlEngine::CppOwnership);
  engine.setProperty(nameOf<T>().constData(), QVariant::fromValue<QObject*>(&object));
}

/// Returns the object of type T that was given to an engine. There must be one.
template <typename T>
T& of(QQmlEngine& engine) {
  return *qobject_cast<T*>(engine.property(nameOf<T>().constData()).template value<QObject*>());
}

}  // namespace EngineObjects

}  // namespace tavrix::window
