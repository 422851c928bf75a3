#pragma once

#include <QDir>
#include <QQmlAbstractUrlInterceptor>

namespace tavrix::window {

/// Makes an engine take the screens from a folder, for developers who change them without building
/// the program.
class ScreensFolder : public QQmlAbstractUrlInterceptor {
 public:
  explicit ScreensFolder(const QString& folder) : folder_(folder) {}

  QUrl intercept(const QUrl& url, DataType type) override {
    if (type != QmlFile) return url;
    for (const char* const place : {"", "controls/", "dialogs/", "folder/", "inspector/"}) {
      const QString file = folder_.absoluteFilePath(QLatin1String{place} + url.fileName());
      if (QFile::exists(file)) return QUrl::fromLocalFile(file);
    }
    return url;
  }

 private:
  QDir folder_;
};

}  // namespace tavrix::window
