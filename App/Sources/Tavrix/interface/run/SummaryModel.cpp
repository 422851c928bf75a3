#include "interface/run/SummaryModel.h"

#include <QDesktopServices>
#include <QUrl>

#include "interface/engine/EngineObjects.h"
#include "interface/session/WindowSession.h"
#include "interface/words/Words.h"
#include "services/HistoryFolder.h"

namespace tavrix::window {

static_assert(static_cast<int>(SummaryModel::Note) == static_cast<int>(SummaryRow::Kind::note));
static_assert(static_cast<int>(SummaryModel::Bad) == static_cast<int>(SummaryFacts::Tone::bad));

SummaryModel::SummaryModel(WindowSession& session, const Words& words)
    : session_(session),
      model_(session.model()),
      words_(words),
      subscription_(model_.subscribe([this](const StateChange& change) {
        if (change.has(StateTopic::phase)) refresh();
      })) {
  connect(&words, &Words::languageChanged, this, &SummaryModel::refresh);
  refresh();
}

SummaryModel* SummaryModel::create(QQmlEngine* engine, QJSEngine* /*script*/) {
  return new SummaryModel{EngineObjects::of<WindowSession>(*engine),
                          EngineObjects::of<Words>(*engine)};
}

void SummaryModel::refresh() {
  const AppState& state = model_.state();
  if (!std::holds_alternative<app_phase::Done>(state.phase)) return land({}, {});
  // A run of many files takes a while to be summed up.
  const bool isPhone = std::holds_alternative<data_origin::Device>(state.origin);
  making_.post([this, life = std::weak_ptr{life_}, run = *model_.run(), isPhone,
                language = words_.language(), &loop = session_.loop()] {
    SummaryFacts facts = summaryOf(language, run, isPhone);
    std::vector<SummaryRow> rows = summaryRows(language, facts);
    loop.post([this, life, facts = std::move(facts), rows = std::move(rows)] {
      if (life.lock()) land(facts, rows);
    });
  });
}

void SummaryModel::land(SummaryFacts facts, std::vector<SummaryRow> rows) {
  beginResetModel();
  facts_ = std::move(facts);
  rows_ = std::move(rows);
  endResetModel();
  Q_EMIT changed();
}

int SummaryModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant SummaryModel::data(const QModelIndex& index, int role) const {
  const auto row = static_cast<std::size_t>(index.row());
  if (!index.isValid() || row >= rows_.size()) return {};
  const SummaryRow& shown = rows_[row];
  switch (role) {
    case KindRole:
      return static_cast<int>(shown.kind);
    case TextRole:
      return QString::fromStdString(shown.text);
    case AsideRole:
      return QString::fromStdString(shown.aside);
    case DetailRole:
      return QString::fromStdString(shown.detail);
    case DepthRole:
      return shown.depth;
    default:
      return {};
  }
}

QHash<int, QByteArray> SummaryModel::roleNames() const {
  return {{KindRole, "kind"},
          {TextRole, "line"},
          {AsideRole, "aside"},
          {DetailRole, "detail"},
          {DepthRole, "depth"}};
}

void SummaryModel::openFolder() {
  const Run* const run = model_.run();
  if (run == nullptr) return;
  const std::string path = absolutePath(run->destination);
  QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(path)));
}

void SummaryModel::retry() {
  model_.leaveSummary();
  model_.startTransfer();
}

}  // namespace tavrix::window
