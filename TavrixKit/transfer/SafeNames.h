#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "foundation/files/FileError.h"

namespace tavrix {

/// Names for volumes that do not accept every name: exFAT, NTFS, shares of other systems.
namespace SafeNames {

/// Returns true if an operation that creates or renames a file or a folder failed in a way in which
/// volumes refuse the name of `path`. An I/O error is a refusal only if the name has another safe
/// form: some shares report nothing better.
bool isRefusal(const FileError& error, std::string_view path);

/// Returns the form of a file name that such volumes accept. A name with a forbidden character
/// (FolderName), or with a full stop or a space at its end, is sanitised like the name of a folder;
/// "-" is appended to the stem of a reserved name, such as "CON" or "com1.jpg". Every other name is
/// returned unchanged.
std::string safeName(std::string_view name);
/// As safeName(), for each part of a path.
std::string safePath(std::string_view path);

/// Returns the path of the temporary file of a file whose planned path was refused. Files whose
/// names have the same safe form have different ones.
std::string partPath(const std::string& planned);
/// As partPath(), for the result of a conversion.
std::string convertedPartPath(const std::string& planned);

}  // namespace SafeNames

}  // namespace tavrix
