#include "interface/words/PathText.h"

#include <QDir>

namespace tavrix::window {

QString shortPath(const QString& path) {
  const QString home = QDir::homePath();
  const bool isInHome = path == home || path.startsWith(home + QLatin1Char{'/'});
  return isInHome ? QLatin1Char{'~'} + path.mid(home.size()) : path;
}

QString wholePath(const QString& typed) {
  const bool isInHome = typed == QLatin1String{"~"} || typed.startsWith(QLatin1String{"~/"});
  return isInHome ? QDir::homePath() + typed.mid(1) : typed;
}

}  // namespace tavrix::window
