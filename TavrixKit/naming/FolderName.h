#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tavrix {

/// What makes a text safe as the name of one folder on the file systems that phones' photos are
/// copied to: POSIX, FAT, exFAT, NTFS.
namespace FolderName {

/// Besides these, every control character (Unicode category Cc) is forbidden.
inline constexpr std::string_view forbiddenCharacters = R"(/\:?%*|"<>)";
/// Leaves room for a suffix such as " (2)" within the usual 255 bytes.
inline constexpr std::size_t maxBytes = 235;
/// What sanitising gives when it leaves nothing.
inline constexpr std::string_view untitled = "untitled";

/// Each forbidden character replaced by one "-" and each ill-formed UTF-8 sequence by U+FFFD;
/// nothing else is changed.
std::string replacingForbidden(std::string_view text);

/// The safe name: forbidden characters replaced, white space at both ends and then leading full
/// stops removed, cut to at most `maxBytes` bytes between extended grapheme clusters, trailing full
/// stops and spaces (U+0020) removed; never empty.
std::string sanitise(std::string_view text);

}  // namespace FolderName

}  // namespace tavrix
