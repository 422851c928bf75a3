#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "foundation/files/Folder.h"

namespace tavrix {

/// Writes a small file completely or not at all. Writes the content to a temporary file beside the
/// target ("settings.0123456789ab.json.part"), syncs it, renames it over the target and syncs the
/// folder's entries. If several writers write the same target, each writes a complete file and the
/// last one remains. Throws FileError. On failure the target is unchanged and the temporary file is
/// removed; only if syncing the folder fails is the new content already in place.
void writeFileAtomically(Folder& folder, const std::string& path, std::string_view content);
/// As above, for a file too large to hold in memory: `write` appends its content.
void writeFileAtomically(Folder& folder, const std::string& path,
                         const std::function<void(WritableFile&)>& write);

/// Returns true if `name` is a name that writeFileAtomically() gives to a temporary file of
/// `target`. Both are names in the same folder.
bool isTemporaryOf(std::string_view name, std::string_view target);
/// Removes temporary files that killed writers left behind: those whose modification time is more
/// than an hour before that of `target`, a file directly in the folder. The caller has just written
/// `target`. Never throws.
void removeLeftOvers(Folder& folder, const std::string& target) noexcept;

/// Return the folder part of a path ("" if it has none) and its last part.
std::string parentPath(const std::string& path);
std::string lastPathComponent(const std::string& path);
/// Returns true if a name can be one component of a path: it is not empty, "." or "..", and it
/// contains neither "/" nor NUL.
bool isSafePathComponent(std::string_view name);

}  // namespace tavrix
