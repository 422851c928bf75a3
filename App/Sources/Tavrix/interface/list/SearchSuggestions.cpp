#include "interface/list/SearchSuggestions.h"

#include "foundation/Sentences.h"
#include "interface/engine/EngineObjects.h"
#include "interface/session/WindowSession.h"
#include "interface/words/Words.h"

namespace tavrix::window {

SearchSuggestions::SearchSuggestions(WindowSession& session, const Words& words)
    : model_(session.model()),
      words_(words),
      subscription_(model_.subscribe([this](const StateChange& change) {
        if (isSame(change.after.searchSuggestions, suggestions_)) return;
        beginResetModel();
        suggestions_ = change.after.searchSuggestions;
        endResetModel();
        Q_EMIT countChanged();
      })) {}

SearchSuggestions* SearchSuggestions::create(QQmlEngine* engine, QJSEngine* /*script*/) {
  return new SearchSuggestions{EngineObjects::of<WindowSession>(*engine),
                               EngineObjects::of<Words>(*engine)};
}

int SearchSuggestions::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(suggestions_->size());
}

QVariant SearchSuggestions::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const SearchSuggestion& suggestion = (*suggestions_)[static_cast<std::size_t>(index.row())];
  switch (role) {
    case TitleRole:
      return QString::fromStdString(suggestion.title);
    case SymbolRole:
      return suggestion.kind == SearchSuggestion::Kind::place ? QStringLiteral("place")
                                                              : QStringLiteral("calendar");
    case FilesRole:
      return QString::fromStdString(
          counted(words_.language(), suggestion.count, tavrix::sentences::files));
    default:
      return {};
  }
}

QHash<int, QByteArray> SearchSuggestions::roleNames() const {
  return {{TitleRole, "title"}, {SymbolRole, "symbol"}, {FilesRole, "files"}};
}

void SearchSuggestions::choose(int row) {
  const auto index = static_cast<std::size_t>(row);
  if (row < 0 || index >= suggestions_->size()) return;
  model_.search(std::string{(*suggestions_)[index].title});
}

}  // namespace tavrix::window
