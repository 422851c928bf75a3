#include <gtest/gtest.h>

#include <QtQml/qqmlextensionplugin.h>
#include <QGuiApplication>
#include <QQuickStyle>

Q_IMPORT_QML_PLUGIN(TavrixPlugin)

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  if (qEnvironmentVariableIsEmpty("QT_QUICK_BACKEND")) qputenv("QT_QUICK_BACKEND", "software");
  const QGuiApplication application{argc, argv};
  QQuickStyle::setStyle(QStringLiteral("Basic"));
  return RUN_ALL_TESTS();
}
