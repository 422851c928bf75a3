#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "defaults/UserDefaults.h"
#include "foundation/json/JsonWriter.h"

namespace tavrix {

/// Writes a value with the keys of its objects sorted.
void writeValue(JsonWriter& json, const JsonValue& value);

/// The form of the file of user defaults, described in docs/defaults.md.
namespace DefaultsFile {

inline constexpr std::string_view fileName = "defaults.json";
inline constexpr std::uint64_t largestBytes = 16U << 20U;

/// A whole document: pretty-printed with sorted keys and a line break at its end. Ill-formed UTF-8
/// becomes U+FFFD. Nesting or texts beyond the default JsonLimits are written, but do not decode.
std::string encode(const DefaultsObjects& objects);
/// Throws JsonError, of kind `rejected` for what is JSON and no object.
DefaultsObjects decode(std::string_view text);

}  // namespace DefaultsFile

}  // namespace tavrix
