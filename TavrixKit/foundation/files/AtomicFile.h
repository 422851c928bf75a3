#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "foundation/files/Folder.h"

namespace tavrix {

/// Writes a small file whole or not at all: beside the target under its name with ".part", onto
/// stable storage, then renamed over it, and the folder's entry synced. On failure the target is as
/// before and the temporary file is gone; only when the folder cannot be synced is the new content
/// in place already. Throws FileError.
void writeFileAtomically(Folder& folder, const std::string& path, std::string_view content);
/// The same for a file too large to hold in memory: `write` appends its content.
void writeFileAtomically(Folder& folder, const std::string& path,
                         const std::function<void(WritableFile&)>& write);

/// The folder part of a path ("" when it has none) and its last part.
std::string parentPath(const std::string& path);
std::string lastPathComponent(const std::string& path);
/// Whether a name may stand as one component of a path: not empty, ".", "..", and without "/" and
/// NUL.
bool isSafePathComponent(std::string_view name);

}  // namespace tavrix
