#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "foundation/files/Folder.h"

namespace tavrix {

/// Writes a small file whole or not at all: beside the target under a name of its own
/// ("settings.0123456789ab.json.part"), onto stable storage, then renamed over it, and the folder's
/// entry synced. So of several writers each writes a whole file, and the last one's stays. On
/// failure the target is as before and the temporary file is gone; only when the folder cannot be
/// synced is the new content in place already. Throws FileError.
void writeFileAtomically(Folder& folder, const std::string& path, std::string_view content);
/// The same for a file too large to hold in memory: `write` appends its content.
void writeFileAtomically(Folder& folder, const std::string& path,
                         const std::function<void(WritableFile&)>& write);

/// Whether a name is that of a temporary file of a target directly in the same folder.
bool isTemporaryOf(std::string_view name, std::string_view target);
/// Removes the temporary files of a target directly in the folder that killed writers left:
/// those that are an hour older than the target, which has just been written. Never throws.
void removeLeftOvers(Folder& folder, const std::string& target) noexcept;

/// The folder part of a path ("" when it has none) and its last part.
std::string parentPath(const std::string& path);
std::string lastPathComponent(const std::string& path);
/// Whether a name may stand as one component of a path: not empty, ".", "..", and without "/" and
/// NUL.
bool isSafePathComponent(std::string_view name);

}  // namespace tavrix
