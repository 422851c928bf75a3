#pragma once

#include <fcntl.h>

#include <string>
#include <vector>

#include "foundation/files/Folder.h"

/// Lists open folders, given by their descriptors. `path` is that of the folder, for errors.
namespace tavrix::FolderListing {

inline constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;

/// Returns a second descriptor of a folder, with its own listing position. Negative on failure.
int openAgain(int folder);

/// Returns the names in a folder, in no particular order. Throws FileError.
std::vector<std::string> namesIn(int folder, const std::string& path);

/// As Folder::visitAll(). Lists the folders directly in this one on several threads; the visitor is
/// called by one at a time.
std::vector<UnreadableFolder> visitAll(int folder, const std::string& path,
                                       const Folder::Visitor& visitor);

}  // namespace tavrix::FolderListing
