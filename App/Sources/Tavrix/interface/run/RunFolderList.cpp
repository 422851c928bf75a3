#include "interface/run/RunFolderList.h"

#include <algorithm>

#include "foundation/Text.h"
#include "interface/engine/EngineObjects.h"
#include "interface/session/WindowSession.h"
#include "interface/words/TransferPageSentences.h"
#include "interface/words/Words.h"

namespace tavrix::window {

RunFolderList::RunFolderList(WindowSession& session, const Words& words)
    : model_(session.model()),
      words_(words),
      subscription_(model_.subscribe([this](const StateChange& change) { follow(change); })) {
  reset(model_.state());
}

RunFolderList* RunFolderList::create(QQmlEngine* engine, QJSEngine* /*script*/) {
  return new RunFolderList{EngineObjects::of<WindowSession>(*engine),
                           EngineObjects::of<Words>(*engine)};
}

int RunFolderList::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(ends_.size());
}

QVariant RunFolderList::data(const QModelIndex& index, int role) const {
  const auto row = static_cast<std::size_t>(index.row());
  if (!index.isValid() || row >= ends_.size()) return {};
  const TransferFolder& folder = (*folders_)[row];
  const std::uint64_t done = doneIn(row);
  const Language language = words_.language();
  switch (role) {
    case NameRole:
      return QString::fromStdString(printable(folder.name));
    case CountsRole:
      return QString::fromStdString(say(language, sentences::filesDone, numberText(language, done),
                                        numberText(language, folder.files)));
    case FractionRole:
      return static_cast<double>(done) / static_cast<double>(folder.files);
    case IsDoneRole:
      return done == folder.files;
    default:
      return {};
  }
}

QHash<int, QByteArray> RunFolderList::roleNames() const {
  return {{NameRole, "name"},
          {CountsRole, "counts"},
          {FractionRole, "fraction"},
          {IsDoneRole, "isDone"}};
}

std::uint64_t RunFolderList::doneIn(std::size_t row) const {
  const std::uint64_t files = (*folders_)[row].files;
  const std::uint64_t start = ends_[row] - files;
  return std::clamp(filesDone_, start, ends_[row]) - start;
}

int RunFolderList::rowAt(std::uint64_t filesDone) const {
  const auto found = std::ranges::upper_bound(ends_, filesDone);
  const auto row = std::distance(ends_.begin(), found);
  return static_cast<int>(std::min<std::ptrdiff_t>(row, std::ssize(ends_) - 1));
}

void RunFolderList::follow(const StateChange& change) {
  if (!isSame(change.before.transferFolders, change.after.transferFolders) ||
      change.has(StateTopic::phase)) {
    reset(change.after);
  } else if (change.after.progress) {
    showProgress(change.after.progress->filesDone);
  }
}

void RunFolderList::reset(const AppState& state) {
  beginResetModel();
  folders_ = state.transferFolders;
  ends_.clear();
  std::uint64_t end = 0;
  for (const TransferFolder& folder : *folders_) ends_.push_back(end += folder.files);
  filesDone_ = state.progress ? state.progress->filesDone : 0;
  endResetModel();
  current_ = rowAt(filesDone_);
  Q_EMIT currentChanged();
}

void RunFolderList::showProgress(std::uint64_t filesDone) {
  if (filesDone == filesDone_ || ends_.empty()) return;
  const int before = rowAt(std::min(filesDone, filesDone_));
  const int after = rowAt(std::max(filesDone, filesDone_));
  filesDone_ = filesDone;
  Q_EMIT dataChanged(index(before), index(after), {CountsRole, FractionRole, IsDoneRole});
  if (std::exchange(current_, rowAt(filesDone)) != current_) Q_EMIT currentChanged();
}

}  // namespace tavrix::window
