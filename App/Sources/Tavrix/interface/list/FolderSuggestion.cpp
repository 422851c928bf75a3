#include "interface/list/FolderSuggestion.h"

#include "interface/engine/EngineObjects.h"
#include "interface/session/WindowSession.h"
#include "interface/words/Words.h"
#include "text/SuggestionText.h"

namespace tavrix::window {

FolderSuggestion::FolderSuggestion(WindowSession& session, const Words& words)
    : model_(session.model()),
      words_(words),
      subscription_(model_.subscribe([this](const StateChange& change) {
        if (change.has(StateTopic::rows)) update();
      })) {
  connect(&words, &Words::languageChanged, this, [this] { update(); });
  update();
}

FolderSuggestion* FolderSuggestion::create(QQmlEngine* engine, QJSEngine* /*script*/) {
  return new FolderSuggestion{EngineObjects::of<WindowSession>(*engine),
                              EngineObjects::of<Words>(*engine)};
}

const MergeSuggestion* FolderSuggestion::first() const {
  const auto& suggestions = *model_.state().mergeSuggestions;
  return suggestions.empty() ? nullptr : &suggestions.front();
}

void FolderSuggestion::update() {
  QString text;
  const MergeSuggestion* const suggestion = first();
  const auto& library = model_.library();
  const MediaGroup* const trip =
      suggestion && library ? groupOf(*library, suggestion->firstTripID) : nullptr;
  if (trip != nullptr) {
    text = QString::fromStdString(suggestionText(words_.language(), *suggestion, *trip,
                                                 library->places.get(),
                                                 model_.state().settings->gathering.timeZone));
  }
  if (text == text_) return;
  text_ = text;
  Q_EMIT changed();
}

void FolderSuggestion::accept() {
  if (const auto* const suggestion = first()) {
    const auto ids = suggestion->groupIDs;
    model_.mergeGroups(ids);
  }
}

void FolderSuggestion::reject() {
  if (const auto* const suggestion = first()) {
    const auto ids = suggestion->groupIDs;
    model_.rejectSuggestion(ids);
  }
}

}  // namespace tavrix::window
