#pragma once

#include <string>

#include "foundation/Sentence.h"
#include "interface/list/FolderRows.h"

namespace tavrix::window {

/// The texts on the card of a folder, in the language given. Days are those of the zone in the
/// state's settings.
namespace CardText {

/// Returns the title of a section: "Июль 2026", "2026", "Без даты".
std::string sectionTitle(Language language, const FolderRows::Section& section);
/// Returns the days of the folder: "16–18 мая 2026"; for one without dates "Без даты".
std::string period(Language language, const DisplayGroup& folder, const TimeZone& zone);
/// Returns the counts by kind: "42 фото, 3 видео".
std::string counts(Language language, const DisplayGroup& folder);
/// Returns the effect of a transfer: "40 новых, 310 МБ", or why there is none. If no destination
/// is chosen, no file is called new.
std::string effect(Language language, const DisplayGroup& folder, bool hasDestination);
/// Returns true if all files of the folder are at the destination.
bool isInPlace(const DisplayGroup& folder);
/// Returns what is special about the folder: merged, continued, with reduced copies. Empty if
/// nothing is.
std::string note(Language language, const DisplayGroup& folder);
/// Returns what a screen reader says after the name: the texts above and the place in the list,
/// which counts from 1.
std::string description(Language language, const DisplayGroup& folder, const AppState& state,
                        std::size_t number, std::size_t count);

}  // namespace CardText

}  // namespace tavrix::window
