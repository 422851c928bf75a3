#include "interface/list/FolderListModel.h"

#include "interface/engine/EngineObjects.h"
#include "interface/list/CardText.h"
#include "interface/session/WindowSession.h"
#include "interface/words/Words.h"

namespace tavrix::window {

FolderListModel::FolderListModel(WindowSession& session, const Words& words)
    : model_(session.model()),
      words_(words),
      groups_(model_.state().visibleGroups),
      subscription_(model_.subscribe([this](const StateChange& change) { follow(change); })) {
  connect(&words, &Words::languageChanged, this, [this] {
    if (count() > 0) Q_EMIT dataChanged(index(0), index(count() - 1));
  });
}

FolderListModel* FolderListModel::create(QQmlEngine* engine, QJSEngine* /*script*/) {
  return new FolderListModel{EngineObjects::of<WindowSession>(*engine),
                             EngineObjects::of<Words>(*engine)};
}

int FolderListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : count();
}

QVariant FolderListModel::data(const QModelIndex& index, int role) const {
  const auto& groups = *groups_;
  const auto row = static_cast<std::size_t>(index.row());
  if (!index.isValid() || row >= groups.size()) return {};
  const DisplayGroup& folder = *groups[row];
  const Language language = words_.language();
  switch (role) {
    case NameRole:
      return QString::fromStdString(folder.folderName);
    case PeriodRole:
      return QString::fromStdString(
          CardText::period(language, folder, model_.state().settings->gathering.timeZone));
    case CountsRole:
      return QString::fromStdString(CardText::counts(language, folder));
    case NewFilesRole:
      return QString::fromStdString(CardText::newFiles(language, folder));
    case CheckedRole:
      return isIncluded(model_.state(), folder);
    default:
      return {};
  }
}

QHash<int, QByteArray> FolderListModel::roleNames() const {
  return {{NameRole, "name"},
          {PeriodRole, "period"},
          {CountsRole, "counts"},
          {NewFilesRole, "newFiles"},
          {CheckedRole, "isChecked"}};
}

void FolderListModel::toggle(int row) {
  const auto index = static_cast<std::size_t>(row);
  if (row >= 0 && index < groups_->size()) model_.toggleGroup((*groups_)[index]->stableKey);
}

void FolderListModel::follow(const StateChange& change) {
  if (change.has(StateTopic::rows)) {
    beginResetModel();
    groups_ = change.after.visibleGroups;
    endResetModel();
    Q_EMIT countChanged();
  } else if (change.has(StateTopic::checks) && count() > 0) {
    Q_EMIT dataChanged(index(0), index(count() - 1), {CheckedRole});
  }
}

}  // namespace tavrix::window
