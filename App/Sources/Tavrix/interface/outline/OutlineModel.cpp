#include "interface/outline/OutlineModel.h"

#include "interface/engine/EngineObjects.h"
#include "interface/outline/OutlineText.h"
#include "interface/session/ViewChoices.h"
#include "interface/session/WindowSession.h"
#include "interface/words/Words.h"

namespace tavrix::window {
namespace {

int levelOf(const OutlineRow& row) {
  using enum OutlineRow::Kind;
  if (row.kind == month) return 2;
  return row.kind == all || row.isTitle() ? 0 : 1;
}

}  // namespace

OutlineModel::OutlineModel(WindowSession& session, const Words& words, ViewChoices& view)
    : model_(session.model()),
      words_(words),
      view_(view),
      folds_{.hasYears = view.yearsExpanded(), .hasPlaces = view.placesExpanded()},
      subscription_(model_.subscribe([this](const StateChange& change) { follow(change); })) {
  connect(&words, &Words::languageChanged, this, [this] {
    if (!rows_.empty()) Q_EMIT dataChanged(index(0), index(rowCount() - 1));
  });
  update();
}

OutlineModel* OutlineModel::create(QQmlEngine* engine, QJSEngine* /*script*/) {
  return new OutlineModel{EngineObjects::of<WindowSession>(*engine),
                          EngineObjects::of<Words>(*engine),
                          EngineObjects::of<ViewChoices>(*engine)};
}

int OutlineModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant OutlineModel::data(const QModelIndex& index, int role) const {
  const OutlineRow* const row = rowAt(index.row());
  if (row == nullptr) return {};
  const Language language = words_.language();
  switch (role) {
    case TitleRole:
      return QString::fromStdString(OutlineText::title(language, *row));
    case FilesRole:
      return QString::fromStdString(OutlineText::files(language, *row));
    case SpokenRole:
      return QString::fromStdString(OutlineText::spoken(language, *row));
    case LevelRole:
      return levelOf(*row);
    case IsTitleRole:
      return row->isTitle();
    case CanExpandRole:
      return row->canExpand();
    case IsExpandedRole:
      return row->isExpanded;
    default:
      return {};
  }
}

QHash<int, QByteArray> OutlineModel::roleNames() const {
  return {{TitleRole, "title"},          {FilesRole, "files"},     {SpokenRole, "spoken"},
          {LevelRole, "level"},          {IsTitleRole, "isTitle"}, {CanExpandRole, "canExpand"},
          {IsExpandedRole, "isExpanded"}};
}

const OutlineRow* OutlineModel::rowAt(int row) const {
  return row >= 0 && row < rowCount() ? &rows_[static_cast<std::size_t>(row)] : nullptr;
}

void OutlineModel::choose(int row) {
  const OutlineRow* const chosen = rowAt(row);
  if (chosen == nullptr) return;
  if (const auto selection = selectionOf(*chosen)) {
    model_.navigate(*selection);
  } else {
    toggle(row);
  }
}

void OutlineModel::toggle(int row) {
  const OutlineRow* const toggled = rowAt(row);
  if (toggled != nullptr && toggled->canExpand()) {
    setExpanded(OutlineRow{*toggled}, !toggled->isExpanded);
  }
}

int OutlineModel::collapse(int row) {
  const OutlineRow* const left = rowAt(row);
  if (left == nullptr) return row;
  if (left->canExpand() && left->isExpanded) return setExpanded(OutlineRow{*left}, false), row;
  int above = row;
  while (above > 0 && levelOf(*rowAt(above)) >= levelOf(*left)) --above;
  return above;
}

int OutlineModel::expand(int row) {
  const OutlineRow* const entered = rowAt(row);
  if (entered == nullptr || !entered->canExpand()) return row;
  if (entered->isExpanded) return std::min(row + 1, rowCount() - 1);
  return setExpanded(OutlineRow{*entered}, true), row;
}

void OutlineModel::setExpanded(const OutlineRow& row, bool isExpanded) {
  if (row.kind == OutlineRow::Kind::year) {
    folds_.years[row.year] = isExpanded;
  } else if (row.kind == OutlineRow::Kind::years) {
    folds_.hasYears = isExpanded;
    view_.setYearsExpanded(isExpanded);
  } else {
    folds_.hasPlaces = isExpanded;
    view_.setPlacesExpanded(isExpanded);
  }
  update();
}

void OutlineModel::follow(const StateChange& change) {
  if (change.has(StateTopic::outline)) update();
}

void OutlineModel::update() {
  std::vector<OutlineRow> next = outlineRows(*model_.state().navOutline, folds_);
  const OutlineChange change = differenceOf(rows_, next);
  if (change.removed > 0) {
    beginRemoveRows({}, change.first, change.first + change.removed - 1);
    rows_.erase(rows_.begin() + change.first, rows_.begin() + change.first + change.removed);
    endRemoveRows();
  }
  if (change.inserted > 0) {
    const auto first = next.begin() + change.first;
    beginInsertRows({}, change.first, change.first + change.inserted - 1);
    rows_.insert(rows_.begin() + change.first, first, first + change.inserted);
    endInsertRows();
  }
  if (std::exchange(rows_, std::move(next)) != rows_) {
    Q_EMIT dataChanged(index(0), index(rowCount() - 1));
  }
  const int current = rowOf(rows_, model_.state().navSelection);
  if (std::exchange(current_, current) != current) Q_EMIT currentChanged();
}

}  // namespace tavrix::window
