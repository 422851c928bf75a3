#pragma once

#include <string>
#include <vector>

namespace tavrix::cli {

/// Returns true if the path is a program that the user may start.
bool canStartProgram(const std::string& path);

/// Replaces this process by another program. Returns only if that fails, with the error code
/// (errno).
int becomeProgram(const std::string& path, const std::vector<std::string>& arguments);

}  // namespace tavrix::cli
