#pragma once

#include <string>
#include <vector>

#include "foundation/Sentence.h"
#include "transfer/DifferingFiles.h"

namespace tavrix {

/// Returns one sentence for each kind that has files: their number, the first of them, and how the
/// transfer treats them.
std::vector<std::string> differingTexts(Language language, const DifferingCounts& counts);

/// Returns how a file differs, to be printed beside its path.
std::string differenceText(Language language, DifferingFile::Kind kind);

}  // namespace tavrix
