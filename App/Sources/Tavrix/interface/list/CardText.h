#pragma once

#include <string>

#include "foundation/Sentence.h"
#include "foundation/TimeZone.h"
#include "model/DisplayGroup.h"

namespace tavrix::window {

/// The texts on the card of a folder. Dates are days in a time zone.
namespace CardText {

/// Returns the days of the folder: "16–18 мая 2026". Returns an empty text without dates.
std::string period(Language language, const DisplayGroup& folder, const TimeZone& zone);
/// Returns the counts by kind: "42 фото, 3 видео".
std::string counts(Language language, const DisplayGroup& folder);
/// Returns the effect of a transfer: "40 новых, 310 МБ". Returns an empty text if there is nothing
/// to copy.
std::string newFiles(Language language, const DisplayGroup& folder);

}  // namespace CardText

}  // namespace tavrix::window
