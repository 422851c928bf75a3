#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tavrix {

/// Makes a text safe as the name of one folder on the usual file systems of a destination: POSIX,
/// FAT, exFAT, NTFS.
namespace FolderName {

/// The forbidden printable characters. All control characters (Unicode category Cc) are forbidden,
/// too.
inline constexpr std::string_view forbiddenCharacters = R"(/\:?%*|"<>)";
/// The greatest length of a name. Leaves room for a suffix such as " (2)" within the usual limit of
/// 255 bytes.
inline constexpr std::size_t maxBytes = 235;
/// The result of sanitise() if nothing is left of the text.
inline constexpr std::string_view untitled = "untitled";

/// Returns the text with each forbidden character replaced by one "-" and each ill-formed UTF-8
/// sequence by U+FFFD. Nothing else is changed.
std::string replacingForbidden(std::string_view text);

/// Returns a safe name, which is never empty. Replaces forbidden characters, removes white space at
/// both ends, then leading full stops. Then cuts the name between extended grapheme clusters to at
/// most `maxBytes` bytes and removes trailing full stops and spaces (U+0020).
std::string sanitise(std::string_view text);

}  // namespace FolderName

}  // namespace tavrix
