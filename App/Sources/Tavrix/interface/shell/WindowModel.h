#pragma once

#include <QtQml/qqmlregistration.h>
#include <QObject>
#include <QString>

#include "model/AppModel.h"

class QJSEngine;
class QQmlEngine;

namespace tavrix::window {

class WindowSession;
class Words;

/// The state of the whole window: which page it shows, its source, and the choices in its top bar.
class WindowModel : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON
  Q_PROPERTY(Page page READ page NOTIFY changed)
  Q_PROPERTY(QString sourceName READ sourceName NOTIFY changed)
  /// True if the source is a phone on the cable.
  Q_PROPERTY(bool isPhone READ isPhone NOTIFY changed)
  /// -1 if shots are not divided into folders.
  Q_PROPERTY(int layout READ layout WRITE setLayout NOTIFY changed)
  Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY changed)
  /// True while folders or counters are about to change.
  Q_PROPERTY(bool isComputing READ isComputing NOTIFY changed)

 public:
  enum Page { EmptyPage, BrowsePage, TransferPage, SummaryPage };
  Q_ENUM(Page)
  enum Layout { Days, Months, Years, Events, Trips };
  Q_ENUM(Layout)

  WindowModel(WindowSession& session, const Words& words);
  static WindowModel* create(QQmlEngine* engine, QJSEngine* script);

  Page page() const;
  QString sourceName() const;
  bool isPhone() const;
  int layout() const;
  void setLayout(int layout);
  QString searchText() const;
  void setSearchText(const QString& text);
  bool isComputing() const;

  /// Opens a folder, a card or a snapshot: a path or a file URL.
  Q_INVOKABLE void openSource(const QString& source);
  /// Follows the phones on the cable.
  Q_INVOKABLE void openPhone();
  /// Reverses the last page change that the user can reverse: closes an overlay, or leaves the
  /// summary.
  Q_INVOKABLE void goBack();

 Q_SIGNALS:
  void changed();

 private:
  WindowSession& session_;
  AppModel& model_;
  const Words& words_;
  AppModel::Subscription subscription_;
};

}  // namespace tavrix::window
