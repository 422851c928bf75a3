#include "interface/list/FolderActions.h"

#include <QClipboard>
#include <QGuiApplication>
#include <algorithm>

#include "interface/engine/EngineObjects.h"
#include "interface/list/BoundaryText.h"
#include "interface/list/FolderListModel.h"
#include "interface/session/WindowSession.h"
#include "interface/words/Words.h"

namespace tavrix::window {

FolderActions::FolderActions(WindowSession& session, FolderListModel& list, const Words& words)
    : model_(session.model()),
      list_(list),
      words_(words),
      subscription_(model_.subscribe([this](const StateChange& change) { follow(change); })) {
  connect(&list, &FolderListModel::selectionChanged, this, &FolderActions::changed);
}

FolderActions* FolderActions::create(QQmlEngine* engine, QJSEngine* /*script*/) {
  const int type = qmlTypeId("Tavrix", 1, 0, "FolderListModel");
  return new FolderActions{EngineObjects::of<WindowSession>(*engine),
                           *engine->singletonInstance<FolderListModel*>(type),
                           EngineObjects::of<Words>(*engine)};
}

void FolderActions::follow(const StateChange& change) {
  const auto& highlight = change.after.highlight;
  const bool isOtherLayout = layoutOf(*change.before.settings) != layoutOf(*change.after.settings);
  if (isOtherLayout) lastMerge_.reset();
  if (highlight && highlight != change.before.highlight) lastMerge_ = highlight->groupID;
  Q_EMIT changed();
}

bool FolderActions::canMerge() const { return list_.chosenFolders().size() > 1; }

bool FolderActions::canTakeApart() const {
  const auto chosen = list_.chosenFolders();
  return chosen.size() == 1 && !chosen.front()->group->children.empty();
}

bool FolderActions::areChecked() const {
  return std::ranges::all_of(list_.chosenFolders(), [&](const auto& folder) {
    return isIncluded(model_.state(), *folder);
  });
}

bool FolderActions::hasFolders() const { return !list_.chosenFolders().empty(); }

bool FolderActions::hasBoundary() const {
  return model_.library() != nullptr && list_.chosenFolders().size() == 1;
}

void FolderActions::toggleChecks() {
  const bool wereChecked = areChecked();
  for (const auto& folder : list_.chosenFolders()) {
    if (isIncluded(model_.state(), *folder) == wereChecked) model_.toggleGroup(folder->stableKey);
  }
}

void FolderActions::merge() {
  std::vector<std::string> ids;
  for (const auto& folder : list_.chosenFolders()) ids.push_back(folder->id);
  if (ids.size() > 1) model_.mergeGroups(ids);
}

void FolderActions::takeApart() {
  if (!canTakeApart()) return;
  lastMerge_.reset();
  model_.unmergeGroup(list_.chosenFolders().front()->id);
}

void FolderActions::undoMerge() {
  if (const auto merged = std::exchange(lastMerge_, std::nullopt)) model_.unmergeGroup(*merged);
  Q_EMIT changed();
}

void FolderActions::keepMerge() {
  lastMerge_.reset();
  Q_EMIT changed();
}

void FolderActions::rename(int row, const QString& name) {
  const DisplayGroup* const folder = list_.folderAt(row);
  if (folder != nullptr && name != list_.nameOf(row)) {
    model_.renameGroup(folder->id, name.toStdString());
  }
}

void FolderActions::copyNames() const {
  QStringList names;
  for (const auto& folder : list_.chosenFolders()) {
    names.append(QString::fromStdString(folder->folderName));
  }
  QGuiApplication::clipboard()->setText(names.join(QLatin1Char{'\n'}));
}

QStringList FolderActions::boundary() const {
  QStringList paragraphs;
  if (!hasBoundary()) return paragraphs;
  const auto chosen = list_.chosenFolders();
  for (const std::string& paragraph :
       boundaryText(words_.language(), *model_.library(), *chosen.front()->group,
                    model_.state().settings->gathering.timeZone)) {
    paragraphs.append(QString::fromStdString(paragraph));
  }
  return paragraphs;
}

}  // namespace tavrix::window
