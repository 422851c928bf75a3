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

/// The line above the list of folders: how many there are and which are checked, and the switch for
/// new files; and the sentence in place of an empty list.
class ListHeader : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON
  Q_PROPERTY(QString text READ text NOTIFY changed)
  Q_PROPERTY(Inclusion inclusion READ inclusion NOTIFY changed)
  Q_PROPERTY(bool onlyNew READ onlyNew WRITE setOnlyNew NOTIFY changed)
  /// False if everything is transferred anyway, because it is packed.
  Q_PROPERTY(bool canBeOnlyNew READ canBeOnlyNew NOTIFY changed)
  /// Empty if there are folders.
  Q_PROPERTY(QString emptyText READ emptyText NOTIFY changed)
  /// True if the search or the sidebar hides folders.
  Q_PROPERTY(bool isNarrowed READ isNarrowed NOTIFY changed)

 public:
  enum Inclusion { All, None, Some };
  Q_ENUM(Inclusion)

  ListHeader(WindowSession& session, const Words& words);
  static ListHeader* create(QQmlEngine* engine, QJSEngine* script);

  QString text() const;
  Inclusion inclusion() const { return inclusion_; }
  bool onlyNew() const;
  void setOnlyNew(bool onlyNew);
  bool canBeOnlyNew() const;
  QString emptyText() const;
  bool isNarrowed() const;

  Q_INVOKABLE void includeAll() { model_.includeAll(); }
  Q_INVOKABLE void includeNone() { model_.includeNone(); }
  /// Checks all folders, or none if all are checked.
  Q_INVOKABLE void toggleAll();
  /// Ends the search and shows all folders.
  Q_INVOKABLE void showAll();

 Q_SIGNALS:
  void changed();

 private:
  void count();

  AppModel& model_;
  const Words& words_;
  Inclusion inclusion_ = All;
  std::uint64_t checked_ = 0;
  AppModel::Subscription subscription_;
};

}  // namespace tavrix::window
