#pragma once

#include <string>

#include "foundation/Sentence.h"
#include "interface/outline/OutlineRows.h"

/// The texts of the lines of the sidebar.
namespace tavrix::window::OutlineText {

/// Returns "Все снимки", "2026", "Июль" or the name of a place.
std::string title(Language language, const OutlineRow& row);
/// Returns the number of files, or an empty text for a title.
std::string files(Language language, const OutlineRow& row);
/// Returns the line as a screen reader reads it: "Июль 2026, 812 файлов", "Места, свёрнуто".
std::string spoken(Language language, const OutlineRow& row);

}  // namespace tavrix::window::OutlineText
