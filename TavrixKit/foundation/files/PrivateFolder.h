#pragma once

#include <memory>
#include <string>

#include "foundation/files/Folder.h"

namespace tavrix {

/// Creates a folder that only the user can open, and its missing parents. An existing folder is
/// left as it is. Throws FileError.
void makePrivateFolder(const std::string& path);

/// Creates the folder if it is missing, and opens it. Only the user can read the files and open the
/// folders that are created through it. Throws FileError.
std::unique_ptr<Folder> openPrivateFolder(const std::string& path);

}  // namespace tavrix
