#pragma once

#include <string>

namespace tavrix {

/// Creates a folder that only the user can open, and its missing parents. An existing folder is
/// left as it is. Throws FileError.
void makePrivateFolder(const std::string& path);

}  // namespace tavrix
