#include "interface/list/ListHeader.h"

#include <algorithm>

#include "foundation/Sentences.h"
#include "interface/engine/EngineObjects.h"
#include "interface/session/WindowSession.h"
#include "interface/words/Words.h"

namespace tavrix::window {

ListHeader::ListHeader(WindowSession& session, const Words& words)
    : model_(session.model()),
      words_(words),
      subscription_(model_.subscribe([this](const StateChange& change) {
        if (change.has(StateTopic::rows) || change.has(StateTopic::checks)) count();
        Q_EMIT changed();
      })) {
  connect(&words, &Words::languageChanged, this, &ListHeader::changed);
  count();
}

ListHeader* ListHeader::create(QQmlEngine* engine, QJSEngine* /*script*/) {
  return new ListHeader{EngineObjects::of<WindowSession>(*engine),
                        EngineObjects::of<Words>(*engine)};
}

void ListHeader::count() {
  const AppState& state = model_.state();
  checked_ = static_cast<std::uint64_t>(std::ranges::count_if(
      *state.visibleGroups, [&](const auto& folder) { return isIncluded(state, *folder); }));
  switch (tavrix::inclusion(state)) {
    case InclusionState::all:
      inclusion_ = All;
      return;
    case InclusionState::none:
      inclusion_ = None;
      return;
    case InclusionState::some:
      inclusion_ = Some;
  }
}

QString ListHeader::text() const {
  const Language language = words_.language();
  const std::uint64_t count = model_.state().visibleGroups->size();
  const std::string folders = counted(language, count, tavrix::sentences::folders);
  const auto with = [&](const Sentence<>& part) {
    return QString::fromStdString(folders + " · " + say(language, part));
  };
  if (count == 0) return QString::fromStdString(folders);
  if (inclusion_ == None)
    return with(count == 1 ? sentences::oneUnchecked : sentences::noneChecked);
  if (inclusion_ == All) return with(count == 1 ? sentences::oneChecked : sentences::allChecked);
  return QString::fromStdString(
      folders + " · " + say(language, sentences::someChecked, numberText(language, checked_)));
}

bool ListHeader::onlyNew() const { return model_.state().settings->layout.onlyNew; }

void ListHeader::setOnlyNew(bool onlyNew) {
  Settings settings = *model_.state().settings;
  settings.layout.onlyNew = onlyNew;
  model_.changeSettings(std::move(settings));
}

bool ListHeader::canBeOnlyNew() const { return !model_.state().settings->layout.packAsZip; }

QString ListHeader::emptyText() const {
  const AppState& state = model_.state();
  if (!state.visibleGroups->empty() || state.isComputing) return {};
  return QString::fromStdString(
      say(words_.language(), isNarrowed() ? sentences::nothingFound : sentences::noShots));
}

bool ListHeader::isNarrowed() const {
  const AppState& state = model_.state();
  return !state.searchText.empty() ||
         !std::holds_alternative<nav_selection::All>(state.navSelection);
}

void ListHeader::toggleAll() {
  if (inclusion_ == All) {
    model_.includeNone();
  } else {
    model_.includeAll();
  }
}

void ListHeader::showAll() {
  model_.search({});
  model_.navigate(nav_selection::All{});
}

}  // namespace tavrix::window
