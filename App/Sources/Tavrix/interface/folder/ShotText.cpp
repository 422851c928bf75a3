#include "interface/folder/ShotText.h"

#include <algorithm>

#include "foundation/Text.h"
#include "interface/words/DayText.h"
#include "interface/words/FolderPageSentences.h"
#include "interface/words/ListSentences.h"
#include "text/Measures.h"

namespace tavrix::window::ShotText {
namespace {

void append(std::string& text, const std::string& part) {
  if (part.empty()) return;
  if (!text.empty()) text += ", ";
  text += part;
}

const Sentence<>& dateTitle(const AssetBundle& shot) {
  switch (shot.primaryPicture().dateSource().value_or(DateSource::file)) {
    case DateSource::metadata:
      return sentences::takenTitle;
    case DateSource::name:
      return sentences::nameDateTitle;
    case DateSource::file:
      break;
  }
  return sentences::fileDateTitle;
}

std::chrono::seconds wholeSeconds(std::chrono::milliseconds length) {
  return std::max(std::chrono::seconds{1}, std::chrono::round<std::chrono::seconds>(length));
}

std::string filesText(Language language, const AssetBundle& shot) {
  std::string text;
  for (const MediaAsset& asset : shot.assets()) {
    if (!text.empty()) text += '\n';
    text += say(language, sentences::fileWithSize, printable(std::string{asset.name()}),
                bytesText(language, asset.sizeBytes()));
  }
  return text;
}

}  // namespace

std::string dayTitle(Language language, const FolderShots::Section& section) {
  if (!section.day) return say(language, sentences::undatedShots);
  const bool isRussian = language == Language::russian;
  return formattedDay(language, *section.day, isRussian ? "d MMMM y, EEEE" : "EEEE, d MMMM y");
}

std::string marks(Language language, const AssetBundle& shot) {
  std::string text;
  const auto add = [&](bool applies, const Sentence<>& mark) {
    if (applies) append(text, say(language, mark));
  };
  add(shot.isLivePhoto(), sentences::liveMark);
  add(shot.primaryPicture().kind() == MediaKind::video, sentences::filmMark);
  add(shot.hasEditedVersion(), sentences::editedMark);
  add(shot.original().isOptimized(), sentences::reducedMark);
  return text;
}

std::string time(Language language, const AssetBundle& shot, const ShotClock& clock) {
  const ShotClock shownClock{clock.zone, true, clock.places};
  const auto shown = shownClock.timeOf(shot.primaryPicture());
  if (!shown) return {};
  return formattedDate(language, Instant{shown->time_since_epoch()}, "d MMMM y, HH:mm", "UTC");
}

std::string filmLength(std::optional<std::chrono::milliseconds> length) {
  return length ? durationText(wholeSeconds(*length)) : std::string{};
}

std::string description(Language language, const FolderShots& shots, std::size_t index,
                        std::optional<std::chrono::milliseconds> filmLength) {
  std::string text = time(language, shots.shots()[index], shots.clock);
  append(text, marks(language, shots.shots()[index]));
  if (filmLength) append(text, durationInUnits(language, wholeSeconds(*filmLength)));
  if (shots.effects[index].isInPlace) append(text, say(language, sentences::inPlace));
  append(text, say(language, sentences::shotOf, numberText(language, index + 1),
                   numberText(language, shots.shots().size())));
  return text;
}

std::vector<Fact> facts(Language language, const FolderShots& shots, std::size_t index,
                        std::optional<std::chrono::milliseconds> length) {
  std::vector<Fact> facts;
  const auto add = [&](const Sentence<>& title, std::string text) {
    if (!text.empty()) facts.emplace_back(say(language, title), std::move(text));
  };
  const AssetBundle& shot = shots.shots()[index];
  add(dateTitle(shot), time(language, shot, shots.clock));
  if (const auto position = shot.position()) add(sentences::placeTitle, pointText(*position));
  add(sentences::marksTitle, marks(language, shot));
  add(sentences::lengthTitle, filmLength(length));
  add(sentences::filesTitle, filesText(language, shot));
  add(sentences::pathTitle, printable(shots.effects[index].path));
  return facts;
}

}  // namespace tavrix::window::ShotText
