#pragma once

#include <QString>

namespace tavrix::window {

/// Shows a notification of the desktop. Does nothing if the desktop has no service for them.
void notify(const QString& title, const QString& text);

}  // namespace tavrix::window
