#include "interface/list/FolderListModel.h"

#include "interface/engine/EngineObjects.h"
#include "interface/list/CardText.h"
#include "interface/pictures/ShownPictures.h"
#include "interface/session/WindowSession.h"
#include "interface/words/QtText.h"
#include "interface/words/Words.h"

namespace tavrix::window {
namespace {

constexpr std::string_view linesKey = "list.lines";

/// Returns the number of shots that a card does not show, as "+37".
QString moreOf(const DisplayGroup& folder) {
  const std::size_t others = folder.faces->otherShots;
  if (folder.faces->faces.empty() || others == 0) return {};
  return QStringLiteral("+%1").arg(others);
}

}  // namespace

FolderListModel::FolderListModel(WindowSession& session, const Words& words)
    : GridModel({.isList = session.kept(linesKey, 0) != 0}),
      session_(session),
      model_(session.model()),
      words_(words),
      subscription_(model_.subscribe([this](const StateChange& change) { follow(change); })) {
  connect(&words, &Words::languageChanged, this, [this] { setTitles(titles()); });
  takeRows(folderRowsOf(model_.state()));
}

FolderListModel* FolderListModel::create(QQmlEngine* engine, QJSEngine* /*script*/) {
  return new FolderListModel{EngineObjects::of<WindowSession>(*engine),
                             EngineObjects::of<Words>(*engine)};
}

QVariant FolderListModel::data(const QModelIndex& slot, int role) const {
  const int row = entryAt(slot);
  const DisplayGroup* const folder = folderAt(row);
  if (role == RowRole) return folder == nullptr ? none : row;
  if (role == BoxRole) return boxOf(row);
  const bool isFlag = role == IsInPlaceRole || role == IsCheckedRole || role == IsSelectedRole ||
                      role == IsCurrentRole;
  if (folder == nullptr) return isFlag ? QVariant{false} : QVariant{QString{}};
  switch (role) {
    case IsInPlaceRole:
      return CardText::isInPlace(*folder);
    case IsCheckedRole:
      return isIncluded(model_.state(), *folder);
    case IsSelectedRole:
      return selection_.has(folder->key);
    case IsCurrentRole:
      return selection_.current == folder->key;
    default:
      return textOf(*folder, row, role);
  }
}

QVariant FolderListModel::textOf(const DisplayGroup& folder, int row, int role) const {
  const AppState& state = model_.state();
  const Language language = words_.language();
  switch (role) {
    case NameRole:
      return qt(folder.folderName);
    case PeriodRole:
      return qt(CardText::period(language, folder, state.settings->gathering.timeZone));
    case CountsRole:
      return qt(CardText::counts(language, folder));
    case EffectRole:
      return qt(CardText::effect(language, folder, state.destination.has_value()));
    case NoteRole:
      return qt(CardText::note(language, folder));
    case MoreRole:
      return moreOf(folder);
    case SymbolRole:
      return folder.counts.photos > 0 ? QStringLiteral("photo") : QStringLiteral("video");
    case PicturesRole:
      return QVariant::fromValue(ShownPictures{previewAssets(folder)});
    case DescriptionRole:
      return qt(CardText::description(language, folder, state, static_cast<std::size_t>(row) + 1,
                                      rows_.folders.size()));
    default:
      return {};
  }
}

QHash<int, QByteArray> FolderListModel::roleNames() const {
  return {{RowRole, "row"},
          {BoxRole, "box"},
          {NameRole, "name"},
          {PeriodRole, "period"},
          {CountsRole, "counts"},
          {EffectRole, "effect"},
          {NoteRole, "note"},
          {IsInPlaceRole, "isInPlace"},
          {MoreRole, "more"},
          {SymbolRole, "symbol"},
          {PicturesRole, "pictures"},
          {IsCheckedRole, "isChecked"},
          {IsCurrentRole, "isCurrent"},
          {IsSelectedRole, "isSelected"},
          {DescriptionRole, "description"}};
}

void FolderListModel::follow(const StateChange& change) {
  if (change.has(StateTopic::rows) || change.has(StateTopic::settings)) {
    takeRows(folderRowsOf(change.after));
  }
  if (change.has(StateTopic::destination) &&
      change.before.destination.has_value() != change.after.destination.has_value()) {
    refreshAll();
  }
  if (change.has(StateTopic::checks)) {
    refresh([&](int row) {
      const DisplayGroup& folder = *folderAt(row);
      return isIncluded(change.before, folder) != isIncluded(change.after, folder);
    });
  }
  const auto& highlight = change.after.highlight;
  if (highlight && highlight != change.before.highlight) awaited_ = highlight->groupID;
  revealAwaited();
}

void FolderListModel::takeRows(FolderRows rows) {
  const FolderRows old = std::exchange(rows_, std::move(rows));
  if (haveSameFolders(old, rows_)) {
    return refresh([&](int row) {
      const auto index = static_cast<std::size_t>(row);
      return !isSame(old.folders[index], rows_.folders[index]);
    });
  }
  // The folder at the top stays there, if it is still listed.
  auto kept = anchor();
  if (kept) {
    const auto row = rows_.indexOf(old.folders[kept->entry]->key);
    kept = row ? std::optional{Anchor{*row, kept->offset}} : std::nullopt;
  }
  select(listedSelection(selection_, rows_));
  Sections sections{.sizes = {}, .titles = titles()};
  for (const auto& section : rows_.sections) sections.sizes.push_back(section.count);
  setSections(std::move(sections), kept);
}

std::vector<QString> FolderListModel::titles() const {
  std::vector<QString> titles;
  if (!rows_.hasHeaders) return titles;
  for (const auto& section : rows_.sections) {
    titles.push_back(qt(CardText::sectionTitle(words_.language(), section)));
  }
  return titles;
}

void FolderListModel::setList(bool isList) {
  if (isList == GridModel::isList()) return;
  session_.keep(std::string{linesKey}, isList ? 1 : 0);
  GridModel::setList(isList);
}

}  // namespace tavrix::window
