#include "interface/folder/ShotListModel.h"

#include <algorithm>

#include "grouping/GroupFaces.h"
#include "interface/engine/EngineObjects.h"
#include "interface/folder/ShotText.h"
#include "interface/list/CardText.h"
#include "interface/list/FolderListModel.h"
#include "interface/pictures/PictureDesk.h"
#include "interface/pictures/ShownPictures.h"
#include "interface/session/WindowSession.h"
#include "interface/words/QtText.h"
#include "interface/words/Words.h"

namespace tavrix::window {
namespace {

/// Squares beside each other, without texts.
constexpr FolderLayout::Shape tiles{
    .gap = 4, .leastCardWidth = 148, .pictureShape = 1, .cardPadding = 0, .cardTexts = 0};

}  // namespace

ShotListModel::ShotListModel(WindowSession& session, const Words& words,
                             const FolderListModel& list, const PictureDesk& pictures)
    : GridModel(tiles),
      model_(session.model()),
      words_(words),
      list_(list),
      pictures_(pictures),
      subscription_(model_.subscribe([this](const StateChange& change) { follow(change); })) {
  connect(&words, &Words::languageChanged, this, [this] {
    setTitles(titles());
    Q_EMIT folderChanged();
  });
  connect(&pictures, &PictureDesk::filmLengthKnown, this, &ShotListModel::showFilmLength);
}

ShotListModel* ShotListModel::create(QQmlEngine* engine, QJSEngine* /*script*/) {
  const int type = qmlTypeId("Tavrix", 1, 0, "FolderListModel");
  return new ShotListModel{
      EngineObjects::of<WindowSession>(*engine), EngineObjects::of<Words>(*engine),
      *engine->singletonInstance<FolderListModel*>(type), EngineObjects::of<PictureDesk>(*engine)};
}

QString ShotListModel::title() const { return shots_ ? qt(shots_->folder->folderName) : QString{}; }

QString ShotListModel::details() const {
  if (!shots_) return {};
  const DisplayGroup& folder = *shots_->folder;
  const Language language = words_.language();
  const AppState& state = model_.state();
  QStringList parts{qt(CardText::period(language, folder, state.settings->gathering.timeZone)),
                    qt(CardText::counts(language, folder)),
                    qt(CardText::effect(language, folder, state.destination.has_value())),
                    qt(CardText::note(language, folder))};
  parts.removeAll(QString{});
  return parts.join(QStringLiteral(" · "));
}

QVariant ShotListModel::data(const QModelIndex& slot, int role) const {
  const int row = entryAt(slot);
  const bool isShown = shots_ && row >= 0 && row < count();
  if (role == RowRole) return isShown ? row : none;
  if (role == BoxRole) return boxOf(row);
  if (role == IsCurrentRole) return isShown && row == current_;
  if (isShown)
    return valueOf(shots_->shots()[static_cast<std::size_t>(row)], static_cast<std::size_t>(row),
                   role);
  if (role == PicturesRole) return QVariant::fromValue(ShownPictures{});
  const bool isText = role == NameRole || role == FilmLengthRole || role == DescriptionRole;
  return isText ? QVariant{QString{}} : QVariant{false};
}

QVariant ShotListModel::valueOf(const AssetBundle& shot, std::size_t index, int role) const {
  switch (role) {
    case NameRole:
      return QString::fromUtf8(shot.primaryPicture().name().data(),
                               static_cast<qsizetype>(shot.primaryPicture().name().size()));
    case PicturesRole:
      return QVariant::fromValue(ShownPictures{{shownFile(shot)}});
    case IsLiveRole:
      return shot.isLivePhoto();
    case IsFilmRole:
      return shot.primaryPicture().kind() == MediaKind::video;
    case IsEditedRole:
      return shot.hasEditedVersion();
    case IsReducedRole:
      return shot.original().isOptimized();
    case IsInPlaceRole:
      return shots_->effects[index].isInPlace;
    case FilmLengthRole:
      return qt(ShotText::filmLength(filmLength(index)));
    case DescriptionRole:
      return qt(ShotText::description(words_.language(), *shots_, index, filmLength(index)));
    default:
      return {};
  }
}

QHash<int, QByteArray> ShotListModel::roleNames() const {
  return {{RowRole, "row"},
          {BoxRole, "box"},
          {NameRole, "name"},
          {PicturesRole, "pictures"},
          {IsLiveRole, "isLive"},
          {IsFilmRole, "isFilm"},
          {IsEditedRole, "isEdited"},
          {IsReducedRole, "isReduced"},
          {IsInPlaceRole, "isInPlace"},
          {IsCurrentRole, "isCurrent"},
          {FilmLengthRole, "filmLength"},
          {DescriptionRole, "description"}};
}

std::optional<std::chrono::milliseconds> ShotListModel::filmLength(std::size_t row) const {
  return pictures_.filmLength(shownFile(shots_->shots()[row]));
}

void ShotListModel::showFilmLength(const std::string& film) {
  if (!shots_) return;
  refresh([&](int row) {
    return shownFile(shots_->shots()[static_cast<std::size_t>(row)]).id() == film;
  });
  Q_EMIT filmLengthsChanged();
}

void ShotListModel::open(int folderRow) {
  const DisplayGroup* const folder = list_.folderAt(folderRow);
  if (folder == nullptr) return;
  current_ = none;
  take(shotsOf(model_, folder->id));
}

void ShotListModel::close() {
  if (shots_) take(std::nullopt);
}

void ShotListModel::follow(const StateChange& change) {
  if (!shots_) return;
  // Who goes elsewhere in the list wants to see the list.
  if (change.before.navSelection != change.after.navSelection ||
      change.before.searchText != change.after.searchText) {
    return close();
  }
  if (change.has(StateTopic::rows) || change.has(StateTopic::destination)) {
    take(shotsOf(model_, shots_->folder->id));
  }
}

void ShotListModel::take(std::optional<FolderShots> shots) {
  if (shots == shots_) return;
  const auto old = std::exchange(shots_, std::move(shots));
  const bool isSameFolder = old && shots_ && old->folder->id == shots_->folder->id;
  const auto kept = isSameFolder ? anchor() : std::nullopt;
  if (current_ >= (shots_ ? static_cast<int>(shots_->shots().size()) : 0)) current_ = none;
  Sections sections{.sizes = {}, .titles = titles()};
  if (shots_) {
    for (const auto& section : shots_->sections) sections.sizes.push_back(section.count);
  }
  const bool isKept = kept && kept->entry < (shots_ ? shots_->shots().size() : 0);
  setSections(std::move(sections), isKept ? kept : std::nullopt);
  Q_EMIT folderChanged();
  Q_EMIT currentChanged();
}

std::vector<QString> ShotListModel::titles() const {
  std::vector<QString> titles;
  if (!shots_) return titles;
  for (const auto& section : shots_->sections) {
    titles.push_back(qt(ShotText::dayTitle(words_.language(), section)));
  }
  return titles;
}

void ShotListModel::setCurrent(int row) {
  if (row < 0 || row >= count() || row == current_) return;
  const int old = std::exchange(current_, row);
  refresh([&](int shown) { return shown == old || shown == row; });
  moveIntoView(static_cast<std::size_t>(row));
  Q_EMIT currentChanged();
}

void ShotListModel::move(Step step) {
  if (count() > 0) setCurrent(static_cast<int>(rowAfter(step, current_)));
}

}  // namespace tavrix::window
