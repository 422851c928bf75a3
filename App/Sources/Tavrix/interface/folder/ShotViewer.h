#pragma once

#include <QtQml/qqmlregistration.h>
#include <QObject>
#include <QString>
#include <QVariantList>
#include <optional>

#include "interface/folder/OutsideViewer.h"
#include "interface/folder/ShotListModel.h"

namespace tavrix::window {

/// One shot of the opened folder in full size, with what is known about it.
class ShotViewer : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON
  Q_PROPERTY(bool isOpen READ isOpen NOTIFY changed)
  Q_PROPERTY(QString name READ name NOTIFY changed)
  Q_PROPERTY(QString position READ position NOTIFY changed)
  Q_PROPERTY(QVariant pictures READ pictures NOTIFY changed)
  Q_PROPERTY(bool isFilm READ isFilm NOTIFY changed)
  Q_PROPERTY(bool hasEarlier READ hasEarlier NOTIFY changed)
  Q_PROPERTY(bool hasLater READ hasLater NOTIFY changed)
  /// Maps with a "title" and a "text".
  Q_PROPERTY(QVariantList facts READ facts NOTIFY changed)
  /// True while the file is being fetched for another program.
  Q_PROPERTY(bool isFetching READ isFetching NOTIFY fetchingChanged)
  /// The progress of the fetch, or the reason why it failed; empty if there is nothing to report.
  Q_PROPERTY(QString report READ report NOTIFY fetchingChanged)

 public:
  ShotViewer(WindowSession& session, const Words& words, ShotListModel& list);
  static ShotViewer* create(QQmlEngine* engine, QJSEngine* script);

  bool isOpen() const { return isOpen_ && shot() != nullptr; }
  QString name() const;
  QString position() const;
  QVariant pictures() const;
  bool isFilm() const;
  bool hasEarlier() const { return list_.currentRow() > 0; }
  bool hasLater() const { return list_.currentRow() + 1 < list_.count(); }
  QVariantList facts() const;
  bool isFetching() const { return isFetching_; }
  QString report() const { return report_; }

  /// Shows the current shot of the list, if there is one.
  Q_INVOKABLE void open();
  Q_INVOKABLE void close();
  Q_INVOKABLE void showEarlier();
  Q_INVOKABLE void showLater();
  /// Fetches the file and opens it in the program that the system has for it.
  Q_INVOKABLE void openOutside();

 Q_SIGNALS:
  void changed();
  void fetchingChanged();

 private:
  /// Returns the current shot of the list, or nullptr if there is none.
  const AssetBundle* shot() const;
  void take(const PreviewResult& result);
  void setFetching(bool isFetching, const QString& report);

  WindowSession& session_;
  const Words& words_;
  ShotListModel& list_;
  std::optional<OutsideViewer> outside_;  ///< made when it is first needed
  bool isOpen_ = false;
  bool isFetching_ = false;
  QString report_;
};

}  // namespace tavrix::window
