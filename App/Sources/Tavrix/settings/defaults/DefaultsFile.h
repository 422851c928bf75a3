#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "foundation/json/JsonWriter.h"
#include "settings/defaults/UserDefaults.h"

namespace tavrix {

/// Writes a value, sorting the keys of its objects.
void writeValue(JsonWriter& json, const JsonValue& value);

/// The format of the defaults file, described in docs/defaults.md.
namespace DefaultsFile {

inline constexpr std::string_view fileName = "defaults.json";
inline constexpr std::uint64_t largestBytes = 16U << 20U;

/// Returns a whole document: pretty-printed, with sorted keys and a line break at the end. Replaces
/// ill-formed UTF-8 by U+FFFD. Writes nesting and texts beyond the default JsonLimits too, but
/// decode() rejects them.
std::string encode(const DefaultsObjects& objects);
/// Throws JsonError; its kind is `rejected` if the text is JSON but not an object.
DefaultsObjects decode(std::string_view text);

}  // namespace DefaultsFile

}  // namespace tavrix
