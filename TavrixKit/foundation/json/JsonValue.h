#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "foundation/json/JsonReader.h"

namespace tavrix {

/// A small JSON document in memory: settings, templates, contexts. Of equal keys the last one
/// counts.
struct JsonValue {
  using Array = std::vector<JsonValue>;
  using Object = std::map<std::string, JsonValue, std::less<>>;

  std::variant<std::nullptr_t, bool, std::int64_t, std::uint64_t, double, std::string, Array,
               Object>
      data = nullptr;

  bool isNull() const { return std::holds_alternative<std::nullptr_t>(data); }
  /// The value as a type, or null when it is of another one.
  const bool* asBool() const { return std::get_if<bool>(&data); }
  const std::string* asString() const { return std::get_if<std::string>(&data); }
  const Array* asArray() const { return std::get_if<Array>(&data); }
  const Object* asObject() const { return std::get_if<Object>(&data); }
  /// Any number, whole or not.
  std::optional<double> asNumber() const;
  /// The member of an object; null when this is no object or has no such member.
  const JsonValue* member(std::string_view key) const;

  friend bool operator==(const JsonValue&, const JsonValue&) = default;
};

/// Reads one document. Throws JsonError.
JsonValue parseJson(std::string_view text, const JsonLimits& limits = {});

}  // namespace tavrix
