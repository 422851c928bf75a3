#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tavrix {

/// The longest file name that a volume accepts, in bytes.
inline constexpr std::size_t longestFileName = 255;

/// Returns "IMG_0001 (2).HEIC" for "IMG_0001.HEIC" and 2, and the name itself for number 1. A name
/// that would be too long is shortened by whole characters before the number.
std::string numberedName(std::string_view name, std::uint64_t number);
/// As numberedName(), for the last part of a path.
std::string numberedPath(std::string_view path, std::uint64_t number);
/// Returns true if `path` is `base` or a numbered form of it.
bool isNumberedForm(std::string_view path, std::string_view base);

/// Returns the name without its number: "IMG_0001.HEIC" for "IMG_0001 (2).HEIC". Returns any other
/// name unchanged. Also accepts paths.
std::string unnumberedName(std::string_view name);

/// Returns the path to which a damaged file is renamed: "100/IMG_1 (damaged).HEIC" for
/// "100/IMG_1.HEIC" and 1, "100/IMG_1 (damaged) (2).HEIC" for 2. Shortened like numberedName().
std::string damagedPath(std::string_view path, std::uint64_t number);

/// Returns the name with its extension replaced by another one ("jpg").
std::string withExtension(std::string_view name, std::string_view extension);
/// Returns the name with the extension of `other`, or without an extension if `other` has none.
/// Used to name an original whose conversion failed. Also accepts paths as `name`.
std::string withExtensionOf(std::string_view name, std::string_view other);
/// Returns the extension in lower case, without the dot; empty if the name has none.
std::string lowerExtension(std::string_view name);
/// Returns true if the extension is "jpg" or "jpeg", in any case.
bool isJpegName(std::string_view name);
/// Returns the name, its stem shortened if the name is too long for a volume.
std::string fittingName(std::string name);

/// The hidden folder in a destination for files that wait to be packed.
inline constexpr std::string_view stagingFolder = ".Tavrix-staging";
/// Returns true if a path of the destination is in that folder.
bool isStaged(std::string_view path);

/// Returns the path of the temporary file beside `path`: ".part" appended, shortened if the name
/// would be too long.
std::string partPath(const std::string& path);
/// Returns the path of the temporary file for the result of a conversion.
std::string convertedPartPath(const std::string& path);
/// Returns the paths of all temporary files that a transfer may use for a file with this planned
/// path.
std::vector<std::string> partPathsOf(const std::string& path);

}  // namespace tavrix
