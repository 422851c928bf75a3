#pragma once

#include <QtQml/qqmlregistration.h>
#include <QAbstractListModel>

#include "foundation/tasks/SerialQueue.h"
#include "interface/run/SummaryRows.h"
#include "model/AppModel.h"

class QJSEngine;
class QQmlEngine;

namespace tavrix::window {

class WindowSession;
class Words;

/// The summary of the last run: its verdict, and its lines as rows.
class SummaryModel : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON
  Q_PROPERTY(Tone tone READ tone NOTIFY changed)
  /// Empty until the summary has been made.
  Q_PROPERTY(QString verdict READ verdict NOTIFY changed)
  Q_PROPERTY(QString written READ written NOTIFY changed)
  Q_PROPERTY(QString advice READ advice NOTIFY changed)
  Q_PROPERTY(bool canRetry READ canRetry NOTIFY changed)

 public:
  enum Role { KindRole = Qt::UserRole, TextRole, AsideRole, DetailRole, DepthRole };
  enum Kind { Title, Number, Reason, File, Note };
  Q_ENUM(Kind)
  enum Tone { Good, Warning, Bad };
  Q_ENUM(Tone)

  SummaryModel(WindowSession& session, const Words& words);
  static SummaryModel* create(QQmlEngine* engine, QJSEngine* script);

  Tone tone() const { return static_cast<Tone>(facts_.tone); }
  QString verdict() const { return QString::fromStdString(facts_.headline.verdict); }
  QString written() const { return QString::fromStdString(facts_.headline.written); }
  QString advice() const { return QString::fromStdString(facts_.advice); }
  bool canRetry() const { return facts_.canRetry; }

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

  /// Shows the destination in the file manager of the system.
  Q_INVOKABLE void openFolder();
  /// Returns to the folders, and starts the transfer again.
  Q_INVOKABLE void retry();
  /// Returns to the folders.
  Q_INVOKABLE void leave() { model_.leaveSummary(); }

 Q_SIGNALS:
  void changed();

 private:
  void refresh();
  void land(SummaryFacts facts, std::vector<SummaryRow> rows);

  WindowSession& session_;
  AppModel& model_;
  const Words& words_;
  SummaryFacts facts_;
  std::vector<SummaryRow> rows_;
  std::shared_ptr<const bool> life_ = std::make_shared<bool>(true);
  AppModel::Subscription subscription_;
  SerialQueue making_;
};

}  // namespace tavrix::window
