#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tavrix::BundleBuilder {

/// The parts of a camera-style file name: "IMG_E0100.HEIC" has the prefix "IMG", the number "0100",
/// the edit mark and the ext "heic".
struct ParsedName {
  std::string prefix;     ///< upper-cased
  std::string number;     ///< decimal digits, leading zeros kept
  bool isEdited = false;  ///< the name has the edit mark: an "E" or "e" before the digits
  std::string ext;        ///< lower-cased, without the dot; empty if there is none

  friend bool operator==(const ParsedName&, const ParsedName&) = default;
};

/// Parses a name; its characters are extended grapheme clusters. Returns nullopt if the name has no
/// camera pattern.
std::optional<ParsedName> parseName(std::string_view name);

/// Returns true if the name has a camera pattern and the edit mark.
bool isEditedName(std::string_view name);

/// A file name split at its last dot. `extension` is the text after the dot. If this dot is the
/// first or the last character, or a space comes anywhere after it, the name has no extension and
/// `stem` is the whole name. With an extension, the name is stem + "." + extension.
struct FileNameParts {
  std::string_view stem;
  std::string_view extension;

  friend bool operator==(const FileNameParts&, const FileNameParts&) = default;
};
FileNameParts splitFileName(std::string_view name);

}  // namespace tavrix::BundleBuilder
