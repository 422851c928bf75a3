#include "interface/words/TimeText.h"

#include <algorithm>

#include "interface/words/SummaryPageSentences.h"
#include "interface/words/TransferPageSentences.h"

namespace tavrix::window {
namespace {

constexpr std::uint64_t minutesOfHour = 60;

std::string hoursAndMinutes(Language language, std::uint64_t minutes) {
  const std::uint64_t hours = minutes / minutesOfHour;
  const std::uint64_t rest = minutes % minutesOfHour;
  if (hours == 0) return say(language, sentences::minutesText, rest);
  const std::string text = say(language, sentences::hoursText, hours);
  return rest == 0 ? text : text + ' ' + say(language, sentences::minutesText, rest);
}

/// Returns the whole minutes of a time, rounded to steps that grow with it.
std::uint64_t roundedMinutes(std::chrono::seconds time) {
  const auto minutes =
      static_cast<std::uint64_t>(std::chrono::round<std::chrono::minutes>(time).count());
  constexpr std::uint64_t exact = 20;
  const std::uint64_t step = minutes <= exact ? 1 : minutes <= minutesOfHour ? 5 : 10;
  return (minutes + step / 2) / step * step;
}

}  // namespace

std::string timeLeftText(Language language, std::chrono::seconds left) {
  if (left < std::chrono::minutes{1}) return say(language, sentences::lessThanMinuteLeft);
  return say(language, sentences::aboutLeft, hoursAndMinutes(language, roundedMinutes(left)));
}

std::string timeTakenText(Language language, std::chrono::seconds taken) {
  if (taken < std::chrono::minutes{1}) {
    const auto seconds = std::max<std::int64_t>(1, taken.count());
    return say(language, sentences::secondsText, static_cast<std::uint64_t>(seconds));
  }
  const auto minutes = std::chrono::round<std::chrono::minutes>(taken).count();
  return hoursAndMinutes(language, static_cast<std::uint64_t>(minutes));
}

}  // namespace tavrix::window
