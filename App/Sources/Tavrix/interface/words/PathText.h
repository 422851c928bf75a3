#pragma once

#include <QString>

namespace tavrix::window {

/// Returns a path as people read it, with "~" for their own folder.
QString shortPath(const QString& path);
/// Returns the path that the user typed, with their own folder in place of a leading "~".
QString wholePath(const QString& typed);

}  // namespace tavrix::window
