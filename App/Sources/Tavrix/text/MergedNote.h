#pragma once

#include <string>

#include "foundation/Sentence.h"
#include "grouping/MediaGroup.h"

namespace tavrix {

/// Returns the note for a folder that was merged from others, and an empty text for any other
/// folder.
std::string mergedNote(Language language, const MediaGroup& group);

}  // namespace tavrix
