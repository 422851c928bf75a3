#pragma once

#include <chrono>
#include <string>

#include "foundation/Sentence.h"

namespace tavrix::window {

/// Returns how much time is left, as people say it: "осталось около 17 мин". Longer times are
/// rounded more, so that the text changes seldom.
std::string timeLeftText(Language language, std::chrono::seconds left);
/// Returns how long something took: "42 с", "12 мин", "2 ч 5 мин"; at least a second.
std::string timeTakenText(Language language, std::chrono::seconds taken);

}  // namespace tavrix::window
