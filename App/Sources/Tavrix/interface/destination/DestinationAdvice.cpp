#include "interface/destination/DestinationAdvice.h"

#include <algorithm>

#include "foundation/Sentences.h"
#include "interface/words/DestinationBarSentences.h"
#include "runs/Destination.h"
#include "services/FailureText.h"
#include "text/DifferingText.h"
#include "text/PlanSentences.h"
#include "text/SentenceParts.h"

namespace tavrix::window {
namespace {

namespace shared = tavrix::sentences;
using Tone = DestinationAdvice::Tone;

/// Describes each state of the destination.
class StatusTeller {
 public:
  StatusTeller(Language language, const AppState& state, DestinationAdvice& advice)
      : language_(language), state_(state), advice_(advice) {}

  void operator()(const destination_state::Unknown&) {}
  void operator()(const destination_state::Reading&) { tell(sentences::destinationReading); }
  void operator()(const destination_state::Missing&) { tell(sentences::destinationWillBeMade); }
  void operator()(const destination_state::Ready& ready) {
    const std::uint64_t needed = neededBytes(state_);
    if (needed > ready.freeBytes) {
      advice_.status = say(language_, shared::spaceHint, bytesText(language_, needed),
                           bytesText(language_, ready.freeBytes));
      advice_.tone = Tone::warning;
    } else if (state_.newBytes > 0) {
      advice_.status = say(language_, sentences::freeAfterwards,
                           bytesText(language_, ready.freeBytes - state_.newBytes));
    } else {
      advice_.status = say(language_, sentences::freeSpace, bytesText(language_, ready.freeBytes));
    }
  }
  void operator()(const destination_state::Busy&) {
    tell(std::make_exception_ptr(DestinationError{DestinationError::Kind::busy, path()}),
         Tone::warning);
  }
  void operator()(const destination_state::Refused& refused) { tell(refused.error, Tone::bad); }

 private:
  std::string path() const { return state_.destination.value_or(""); }
  void tell(const Sentence<>& sentence) { advice_.status = say(language_, sentence); }
  void tell(const std::exception_ptr& error, Tone tone) {
    advice_.status = failureText(language_, path(), error).value_or("");
    advice_.tone = tone;
  }

  Language language_;
  const AppState& state_;
  DestinationAdvice& advice_;
};

std::vector<std::string> warningsOf(Language language, const DestinationFindings& findings) {
  std::vector<std::string> warnings;
  if (const auto& card = findings.knownCard) {
    warnings.push_back(say(language, sentences::cardSeemsKnown, numberText(language, card->known),
                           counted(language, card->planned, shared::filesOfTotal)));
  }
  if (findings.again.files > 0) {
    const std::string files = counted(language, findings.again.files, shared::files);
    const auto& folders = findings.again.folders;
    warnings.push_back(
        folders.empty() || findings.again.before
            ? say(language, shared::copiesAgain, files)
            : say(language, shared::copiesAgainFrom, files, forSentence(folders.front())));
  }
  for (std::string& text : differingTexts(language, findings.differing)) {
    warnings.push_back(std::move(text));
  }
  if (!findings.unreadableFolders.empty()) {
    warnings.push_back(say(language, sentences::foldersNotKnown,
                           counted(language, findings.unreadableFolders.size(), shared::folders)));
  }
  return warnings;
}

}  // namespace

std::uint64_t neededBytes(const AppState& state) {
  if (!state.settings->layout.packAsZip) return state.newBytes;
  if (!state.settings->layout.packPerGroup) return 2 * state.newBytes;
  std::uint64_t largest = 0;
  for (const auto& folder : *state.visibleGroups) {
    if (isIncluded(state, *folder)) largest = std::max(largest, folder->newBytes);
  }
  return state.newBytes + largest;
}

DestinationAdvice adviceOf(Language language, const AppState& state) {
  DestinationAdvice advice;
  std::visit(StatusTeller{language, state, advice}, state.destinationState);
  advice.warnings = warningsOf(language, *state.findings);
  if (state.newFilesCount > 0) {
    const std::string files = counted(language, state.newFilesCount, shared::files);
    advice.effect = bytesText(language, state.newBytes);
    advice.button = say(language, sentences::transferFiles, files);
    return advice;
  }
  advice.button = say(language, sentences::transferVerb);
  advice.isEverythingInPlace = state.knownFilesCount > 0;
  if (advice.isEverythingInPlace) {
    const bool isSame = !state.findings->differing.leavesAny();
    advice.effect = say(language, isSame ? sentences::everythingInPlace : sentences::nothingNew);
  } else if (!state.visibleGroups->empty() && !state.isComputing) {
    advice.effect = say(language, sentences::nothingChecked);
  }
  return advice;
}

}  // namespace tavrix::window
