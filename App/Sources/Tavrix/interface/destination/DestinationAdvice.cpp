#include "interface/destination/DestinationAdvice.h"

#include <fmt/ranges.h>

#include <algorithm>
#include <array>
#include <utility>

#include "foundation/Sentences.h"
#include "interface/words/DestinationBarSentences.h"
#include "runs/Destination.h"
#include "services/FailureText.h"
#include "settings/FolderMaking.h"
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
    if (ready.freeBytes == Folder::unknownFreeBytes) return;
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

/// Returns the part of the inspector in which a setting of the names is found.
const Sentence<>& subjectOf(std::string_view key) {
  constexpr std::array<std::pair<std::string_view, const Sentence<>*>, 13> subjects{{
      {"timeZoneID", &sentences::subjectTimeZone},
      {"cameraDays", &sentences::subjectTimeZone},
      {"nameByGroupID", &sentences::subjectNames},
      {"nameTemplate", &sentences::subjectNames},
      {"locale", &sentences::subjectLocale},
      {"datelessName", &sentences::subjectNames},
      {"geocodingEnabled", &sentences::subjectPlaces},
      {"mergeDistricts", &sentences::subjectPlaces},
      {"severalCities", &sentences::subjectPlaces},
      {"wholeFolderDates", &sentences::subjectNames},
      {"mergeSameNames", &sentences::subjectNames},
      {"photoJPEG", &sentences::subjectFormat},
      {"videoH264", &sentences::subjectFormat},
  }};
  const auto* const found =
      std::ranges::find(subjects, key, &decltype(subjects)::value_type::first);
  if (found != subjects.end()) return *found->second;
  const bool isOfFiles = key.starts_with("separate") || key.starts_with("flatten");
  if (isOfFiles) return sentences::subjectKinds;
  const bool isPrefix = key == "fileNamePrefixMode" || key == "customFileNamePrefix";
  return isPrefix ? sentences::subjectPrefix : sentences::subjectGathering;
}

std::string subjectsOf(Language language, const std::vector<std::string>& keys) {
  std::vector<std::string> subjects;
  for (const std::string& key : keys) {
    std::string subject = say(language, subjectOf(key));
    if (std::ranges::find(subjects, subject) == subjects.end()) {
      subjects.push_back(std::move(subject));
    }
  }
  return fmt::format("{}", fmt::join(subjects, ", "));
}

std::string againText(Language language, const CopiesAgain& again, const WayBack& way) {
  const std::string files = counted(language, again.files, shared::files);
  if (!way.keys.empty()) {
    return say(language, shared::copiesAgainChanged, files, subjectsOf(language, way.keys));
  }
  if (again.folders.empty()) return say(language, shared::copiesAgain, files);
  return say(language, shared::copiesAgainFrom, files, forSentence(again.folders.front()));
}

std::vector<std::string> warningsOf(Language language, const DestinationFindings& findings,
                                    const WayBack& way) {
  std::vector<std::string> warnings;
  if (const auto& card = findings.knownCard) {
    warnings.push_back(say(language, sentences::cardSeemsKnown, numberText(language, card->known),
                           counted(language, card->planned, shared::filesOfTotal)));
  }
  if (findings.again.files > 0) warnings.push_back(againText(language, findings.again, way));
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

DestinationAdvice adviceOf(Language language, const AppState& state,
                           const std::string& systemLocaleID) {
  DestinationAdvice advice;
  std::visit(StatusTeller{language, state, advice}, state.destinationState);
  const CopiesAgain& again = state.findings->again;
  WayBack way;
  if (again.files > 0 && again.before) {
    way = wayBack(*state.settings, systemLocaleID, *again.before);
  }
  advice.warnings = warningsOf(language, *state.findings, way);
  if (way.isComplete && !way.keys.empty() && !way.locale)
    advice.keepingNames = std::move(way.settings);
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
