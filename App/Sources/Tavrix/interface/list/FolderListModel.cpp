#include "interface/list/FolderListModel.h"

#include <algorithm>

#include "interface/engine/EngineObjects.h"
#include "interface/list/CardText.h"
#include "interface/session/WindowSession.h"
#include "interface/words/Words.h"

namespace tavrix::window {
namespace {

QString qt(const std::string& text) { return QString::fromStdString(text); }

/// Returns the identifier of the pictures on a card. It changes when they do.
QString stripOf(const DisplayGroup& folder) {
  std::size_t revision = 0;
  for (const GroupFaces::Face& face : folder.faces->faces) {
    revision = revision * 31 + std::hash<std::string_view>{}(face.asset.id());
  }
  return QStringLiteral("%1-%2").arg(folder.key).arg(revision, 0, 16);
}

/// Returns the number of shots that a card does not show, as "+37".
QString moreOf(const DisplayGroup& folder) {
  const std::size_t others = folder.faces->otherShots;
  if (folder.faces->faces.empty() || others == 0) return {};
  return QStringLiteral("+%1").arg(others);
}

}  // namespace

FolderListModel::FolderListModel(WindowSession& session, const Words& words)
    : model_(session.model()),
      words_(words),
      subscription_(model_.subscribe([this](const StateChange& change) { follow(change); })) {
  connect(&words, &Words::languageChanged, this, [this] {
    headers_.take(rows_.sections, layout_, words_.language());
    refreshAll();
    Q_EMIT scrolled();
  });
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
    case StripRole:
      return stripOf(folder);
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
          {StripRole, "strip"},
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
  const auto shown = layout_.cardsBetween(top_, top_ + viewHeight_);
  std::optional<std::size_t> kept;
  double offset = 0;
  if (top_ > 0 && shown.first < shown.last) {
    kept = rows_.indexOf(old.folders[shown.first]->key);
    offset = layout_.boxOf(shown.first).y - top_;
  }
  layOut();
  top_ = kept ? clamped(layout_.boxOf(*kept).y - offset) : 0;
  select(listedSelection(selection_, rows_));
  showViewport();
  refreshAll();
  Q_EMIT rebuilt();
  Q_EMIT positioned(top_);
}

double FolderListModel::clamped(double top) const {
  return std::clamp(top, 0.0, std::max(0.0, layout_.height() - viewHeight_));
}

void FolderListModel::layOut() {
  std::vector<std::size_t> sizes;
  for (const auto& section : rows_.sections) sizes.push_back(section.count);
  FolderLayout::Shape shape{.width = width_, .isList = isList_};
  if (!rows_.hasHeaders) shape.header = shape.margin;
  layout_ = FolderLayout{sizes, shape};
  top_ = clamped(top_);
  headers_.take(rows_.sections, layout_, words_.language());
}

void FolderListModel::showViewport() {
  // A little more than what is visible, so that a slow scroll changes slots rarely.
  constexpr double spare = 40;
  const double bottom = top_ + viewHeight_;
  show(layout_.cardsBetween(top_ - spare, bottom + spare));
  const auto sections = layout_.sectionsBetween(top_, bottom);
  headers_.showSections(rows_.hasHeaders ? sections : FolderLayout::Range{});
  Q_EMIT scrolled();
}

void FolderListModel::setViewport(qreal top, qreal width, qreal height) {
  const bool isOtherWidth = width != width_;
  top_ = top;
  viewHeight_ = height;
  if (!isOtherWidth) return showViewport();
  const auto shown = layout_.cardsBetween(top_, top_ + 1);
  width_ = width;
  layOut();
  if (top > 0 && shown.first < shown.last) top_ = clamped(layout_.boxOf(shown.first).y);
  showViewport();
  refreshAll();
  Q_EMIT rebuilt();
  if (top_ != top) Q_EMIT positioned(top_);
}

void FolderListModel::setList(bool isList) {
  if (std::exchange(isList_, isList) == isList) return;
  const auto shown = layout_.cardsBetween(top_, top_ + viewHeight_);
  layOut();
  top_ = top_ > 0 && shown.first < shown.last ? clamped(layout_.boxOf(shown.first).y) : 0;
  showViewport();
  refreshAll();
  Q_EMIT rebuilt();
  Q_EMIT positioned(top_);
}

}  // namespace tavrix::window
