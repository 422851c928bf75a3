#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tavrix::BundleBuilder {

/// The parts of a camera-style file name: "IMG_E0100.HEIC" is prefix IMG, number 0100, edited, ext
/// heic.
struct ParsedName {
  std::string prefix;     ///< upper-cased
  std::string number;     ///< decimal digits, leading zeros kept
  bool isEdited = false;  ///< the name carries the edit mark: an "E" or "e" before the digits
  std::string ext;        ///< lower-cased, without the dot; empty when there is none

  friend bool operator==(const ParsedName&, const ParsedName&) = default;
};

/// Nothing when the name has no camera pattern. Characters are extended grapheme clusters.
std::optional<ParsedName> parseName(std::string_view name);

/// Whether a name has a camera pattern and carries the edit mark.
bool isEditedName(std::string_view name);

/// A file name in two: `extension` is what follows the last dot, without it. A dot that is the
/// first or the last character, or that a space follows somewhere, begins no extension; `stem` is
/// then the whole name. With an extension, stem + "." + extension is the name.
struct FileNameParts {
  std::string_view stem;
  std::string_view extension;

  friend bool operator==(const FileNameParts&, const FileNameParts&) = default;
};
FileNameParts splitFileName(std::string_view name);

}  // namespace tavrix::BundleBuilder
