#include "interface/run/QuestionModel.h"

#include "foundation/Sentences.h"
#include "interface/engine/EngineObjects.h"
#include "interface/session/WindowSession.h"
#include "interface/words/Words.h"
#include "services/FailureText.h"
#include "text/ModelSentences.h"

namespace tavrix::window {
namespace {

namespace shared = tavrix::sentences;

QuestionModel::Kind kindOf(TransferBlocker blocker) {
  switch (blocker) {
    case TransferBlocker::noDevice:
      return QuestionModel::NoDevice;
    case TransferBlocker::noDestination:
      return QuestionModel::NoDestination;
    case TransferBlocker::nothingSelected:
      return QuestionModel::NothingSelected;
    case TransferBlocker::quotaExhausted:
      return QuestionModel::QuotaExhausted;
  }
  return QuestionModel::None;
}

}  // namespace

QuestionModel::QuestionModel(WindowSession& session, const Words& words)
    : model_(session.model()),
      words_(words),
      subscription_(model_.subscribe([this](const StateChange& change) {
        if (change.has(StateTopic::questions)) Q_EMIT changed();
      })) {
  connect(&words, &Words::languageChanged, this, &QuestionModel::changed);
}

QuestionModel* QuestionModel::create(QQmlEngine* engine, QJSEngine* /*script*/) {
  return new QuestionModel{EngineObjects::of<WindowSession>(*engine),
                           EngineObjects::of<Words>(*engine)};
}

QuestionModel::Kind QuestionModel::kind() const {
  const Overlay& overlay = model_.state().overlay;
  if (overlay.is<overlay::OptimizedQuestion>()) return OptimizedCopies;
  if (overlay.is<overlay::StartFailure>()) return StartFailure;
  const auto* const blocker = overlay.as<overlay::Blocker>();
  return blocker == nullptr ? None : kindOf(blocker->kind);
}

QString QuestionModel::say(const Sentence<>& sentence) const {
  return QString::fromStdString(tavrix::say(words_.language(), sentence));
}

QString QuestionModel::title() const {
  const Language language = words_.language();
  switch (kind()) {
    case None:
      return {};
    case OptimizedCopies:
      return QString::fromStdString(
          tavrix::say(language, sentences::optimizedTitle,
                      counted(language, model_.state().optimizedCount, sentences::shots)));
    case NoDevice:
      return say(sentences::noDeviceTitle);
    case NoDestination:
      return say(sentences::noDestinationTitle);
    case NothingSelected:
      return say(sentences::nothingSelectedTitle);
    case QuotaExhausted:
      return say(sentences::quotaTitle);
    case StartFailure:
      return say(sentences::startFailedTitle);
  }
  return {};
}

QString QuestionModel::text() const {
  switch (kind()) {
    case None:
      return {};
    case OptimizedCopies:
      return say(sentences::optimizedText);
    case NoDevice:
      return say(shared::noDevice);
    case NoDestination:
      return say(shared::noDestination);
    case NothingSelected:
      return say(shared::nothingSelected);
    case QuotaExhausted:
      return say(sentences::quotaText);
    case StartFailure:
      break;
  }
  const AppState& state = model_.state();
  const auto text = failureText(words_.language(), state.destination.value_or(""),
                                state.overlay.as<overlay::StartFailure>()->error);
  return text ? QString::fromStdString(*text) : say(sentences::unknownFailure);
}

void QuestionModel::dismiss() {
  if (kind() != None) model_.closeOverlay();
}

}  // namespace tavrix::window
