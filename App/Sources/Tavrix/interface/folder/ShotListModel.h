#pragma once

#include <QtQml/qqmlregistration.h>

#include "interface/folder/FolderShots.h"
#include "interface/grid/GridModel.h"

class QJSEngine;
class QQmlEngine;

namespace tavrix::window {

class FolderListModel;
class PictureDesk;
class WindowSession;
class Words;

/// The shots of the folder that the user has opened, in the visible part of its page. The folder is
/// closed when it is no longer listed.
class ShotListModel : public GridModel {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON
  Q_PROPERTY(bool isOpen READ isOpen NOTIFY folderChanged)
  Q_PROPERTY(QString title READ title NOTIFY folderChanged)
  /// The period, the counts by kind, and the effect of a transfer.
  Q_PROPERTY(QString details READ details NOTIFY folderChanged)
  /// -1 if there is none.
  Q_PROPERTY(int currentRow READ currentRow NOTIFY currentChanged)

 public:
  enum Role {
    RowRole = Qt::UserRole,
    BoxRole,
    NameRole,
    PicturesRole,
    IsLiveRole,
    IsFilmRole,
    IsEditedRole,
    IsReducedRole,
    IsInPlaceRole,
    IsCurrentRole,
    FilmLengthRole,  ///< "0:35"; empty for a picture, and while it is unknown
    DescriptionRole,
  };

  ShotListModel(WindowSession& session, const Words& words, const FolderListModel& list,
                const PictureDesk& pictures);
  static ShotListModel* create(QQmlEngine* engine, QJSEngine* script);

  QVariant data(const QModelIndex& slot, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

  bool isOpen() const { return shots_.has_value(); }
  QString title() const;
  QString details() const;
  int currentRow() const { return current_; }
  const std::optional<FolderShots>& shots() const { return shots_; }
  /// Returns the playing time of the film in a row; nullopt for a picture, and while it is unknown.
  std::optional<std::chrono::milliseconds> filmLength(std::size_t row) const;

  /// Opens the folder in a row of the list of folders.
  Q_INVOKABLE void open(int folderRow);
  Q_INVOKABLE void close();
  Q_INVOKABLE void setCurrent(int row);
  Q_INVOKABLE void move(tavrix::window::GridModel::Step step);

 Q_SIGNALS:
  void folderChanged();
  void currentChanged();
  void filmLengthsChanged();

 private:
  void follow(const StateChange& change);
  void showFilmLength(const std::string& film);
  void take(std::optional<FolderShots> shots);
  std::vector<QString> titles() const;
  QVariant valueOf(const AssetBundle& shot, std::size_t index, int role) const;

  AppModel& model_;
  const Words& words_;
  const FolderListModel& list_;
  const PictureDesk& pictures_;
  std::optional<FolderShots> shots_;
  int current_ = none;
  AppModel::Subscription subscription_;
};

}  // namespace tavrix::window
