#pragma once

#include <string>

#include "foundation/Sentence.h"
#include "foundation/Time.h"

namespace tavrix::window {

/// Returns a moment by a Unicode date pattern (UTS #35) of the language, in the local time of a
/// zone of the tz database.
std::string formattedDate(Language language, Instant instant, const std::string& pattern,
                          const std::string& zoneID);
/// Returns a day by a pattern.
std::string formattedDay(Language language, CivilDate day, const std::string& pattern);
/// Returns "18 мая 2026".
std::string dayInWords(Language language, CivilDate day);

}  // namespace tavrix::window
