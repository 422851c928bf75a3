#pragma once

#include <string>

#include "conversion/codecs/tests/TestStills.h"

namespace tavrix {

/// Returns a HEIC file as phones write it: tiles of 64 by 64 pixels, turned to the left by
/// `quarterTurns` quarters.
std::string tiledHeicOf(const TestPicture& picture, int quarterTurns);

}  // namespace tavrix
