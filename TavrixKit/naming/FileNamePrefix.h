#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tavrix {

/// What stands in front of every copied file's name: nothing, the phone's name, or a person's own
/// text.
enum class FileNamePrefixMode { none, phone, custom };

/// "none", "phone", "custom".
std::string_view textOf(FileNamePrefixMode mode);
/// The mode of a text form; nothing for any other text.
std::optional<FileNamePrefixMode> fileNamePrefixModeOf(std::string_view text);

/// The prefix: "" for `none`, the phone's name and one space for `phone` ("" when it has no name),
/// the text as typed for `custom`. Characters that no file name may hold become "-" as in
/// FolderName; spaces, full stops and the length stay as they are.
std::string fileNamePrefix(FileNamePrefixMode mode, std::string_view customText,
                           std::string_view phoneName);

}  // namespace tavrix
