#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tavrix {

/// The longest name that a volume takes, in bytes.
inline constexpr std::size_t longestFileName = 255;

/// "IMG_0001 (2).HEIC" of "IMG_0001.HEIC" and 2; the name itself for number 1. A name that would be
/// too long loses whole characters before the number.
std::string numberedName(std::string_view name, std::uint64_t number);
/// The same for the last part of a path.
std::string numberedPath(std::string_view path, std::uint64_t number);
/// Whether a path is `base` or a numbered form of it.
bool isNumberedForm(std::string_view path, std::string_view base);

/// The name that a numbered name was made of: "IMG_0001.HEIC" of "IMG_0001 (2).HEIC"; any other
/// name as it is. Works on paths, too.
std::string unnumberedName(std::string_view name);

/// The name with another extension ("jpg") in place of its own.
std::string withExtension(std::string_view name, std::string_view extension);
/// The name with the extension of another name, or without one where that has none: what an
/// original is called whose conversion failed. Works on paths, too.
std::string withExtensionOf(std::string_view name, std::string_view other);
/// The extension in lower case, without the dot; empty when there is none.
std::string lowerExtension(std::string_view name);
/// The name without what makes it longer than a volume takes, its extension kept.
std::string fittingName(std::string name);

/// The temporary name beside a target: ".part" appended, shortened when that would be too long.
std::string partPath(const std::string& path);

}  // namespace tavrix
