#pragma once

#include <string>

namespace tavrix::cli {

/// Where a file that ships with the program lies: in "Resources" beside the program, or, as it is
/// installed, in "../share/tavrix". The first of these when it lies in neither.
std::string resourcePath(const std::string& name);

}  // namespace tavrix::cli
