#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "foundation/Sentence.h"
#include "interface/folder/FolderShots.h"

namespace tavrix::window {

/// The texts about a shot, in the language given.
namespace ShotText {

/// Returns the title of a day: "16 мая 2026, суббота", "Без даты".
std::string dayTitle(Language language, const FolderShots::Section& section);
/// Returns what is special about a shot: "Live Photo, правленый". Empty if nothing is.
std::string marks(Language language, const AssetBundle& shot);
/// Returns the date and time, on the camera's clock if it is known, otherwise on `clock`; empty for
/// a shot without a date.
std::string time(Language language, const AssetBundle& shot, const ShotClock& clock);
/// Returns what a screen reader says after the name. The place in the folder counts from 1.
/// `filmLength` is nullopt for a picture, and while it is unknown.
std::string description(Language language, const FolderShots& shots, std::size_t index,
                        std::optional<std::chrono::milliseconds> filmLength);
/// Returns the playing time of a film in whole seconds, one at least: "0:35". Empty without one.
std::string filmLength(std::optional<std::chrono::milliseconds> length);

/// A title with what it is about.
using Fact = std::pair<std::string, std::string>;
/// Returns the facts beside a shot in full size.
std::vector<Fact> facts(Language language, const FolderShots& shots, std::size_t index,
                        std::optional<std::chrono::milliseconds> filmLength);

}  // namespace ShotText

}  // namespace tavrix::window
