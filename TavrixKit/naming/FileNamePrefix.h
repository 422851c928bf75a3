#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tavrix {

/// The prefix of the name of every copied file: none, the phone's name, or the user's own text.
enum class FileNamePrefixMode { none, phone, custom };

/// Returns "none", "phone" or "custom".
std::string_view textOf(FileNamePrefixMode mode);
/// Returns the mode that textOf() writes as `text`, or nullopt if there is none.
std::optional<FileNamePrefixMode> fileNamePrefixModeOf(std::string_view text);

/// Returns the prefix: "" for `none`, the phone's name and one space for `phone` ("" if the phone
/// has no name), the text as typed for `custom`. Characters forbidden in file names become "-" as
/// in FolderName. Spaces, full stops and the length are not changed.
std::string fileNamePrefix(FileNamePrefixMode mode, std::string_view customText,
                           std::string_view phoneName);

}  // namespace tavrix
