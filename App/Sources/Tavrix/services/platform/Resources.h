#pragma once

#include <string>

namespace tavrix {

/// Returns the path of a data file that ships with the program: in "Resources" beside the program,
/// or in "../share/tavrix" if it exists only there.
std::string resourcePath(const std::string& name);

/// Returns the path of a program that this one starts: beside it, or in "../libexec/tavrix" if it
/// exists only there.
std::string helperPath(const std::string& name);

}  // namespace tavrix
