#pragma once

#include <string>

#include "conversion/tests/TestStills.h"

namespace tavrix {

/// A HEIC file as phones write it: tiles of 64 by 64 pixels, turned to the left so many quarters.
std::string tiledHeicOf(const TestPicture& picture, int quarterTurns);

}  // namespace tavrix
