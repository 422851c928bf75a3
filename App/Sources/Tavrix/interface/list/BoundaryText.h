#pragma once

#include <string>
#include <vector>

#include "foundation/Sentence.h"
#include "library/Library.h"

namespace tavrix::window {

/// Explains, in a few paragraphs, why a folder begins and ends where it does. `library` must have
/// been made with reasons; days are those of `zone`.
std::vector<std::string> boundaryText(Language language, const Library& library,
                                      const MediaGroup& group, const TimeZone& zone);

}  // namespace tavrix::window
