#pragma once

#include <cstdint>
#include <functional>
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
  /// A whole number from 0 to 2^64 - 1.
  std::optional<std::uint64_t> asUnsigned() const;

  friend bool operator==(const JsonValue&, const JsonValue&) = default;
};

/// Builds a value from the events of a text: of a whole one, or of one value inside a larger text.
class JsonValueBuilder : public JsonHandler {
 public:
  /// Whether an object or array has begun and not ended yet.
  bool isOpen() const { return !open_.empty(); }
  /// Hands the value out; the next event begins another one.
  JsonValue take();

  bool null() override { return add({nullptr}); }
  bool boolean(bool value) override { return add({value}); }
  bool integer(std::int64_t value) override { return add({value}); }
  bool unsignedInteger(std::uint64_t value) override { return add({value}); }
  bool number(double value) override { return add({value}); }
  bool string(std::string_view value) override { return add({std::string{value}}); }
  bool key(std::string_view name) override;
  bool startObject() override { return open({JsonValue::Object{}}); }
  bool startArray() override { return open({JsonValue::Array{}}); }
  bool endObject() override { return close(); }
  bool endArray() override { return close(); }

 private:
  JsonValue& place(JsonValue value);
  bool add(JsonValue value);
  bool open(JsonValue value);
  bool close();

  JsonValue root_;
  std::string key_;
  std::vector<JsonValue*> open_;
};

/// Reads one document. Throws JsonError.
JsonValue parseJson(std::string_view text, const JsonLimits& limits = {});

/// Reads a document that is one list and hands over its elements as they come. Throws JsonError,
/// what `take` throws passes.
void readJsonElements(ByteReader& source, const std::function<void(JsonValue element)>& take,
                      const JsonLimits& limits = {});

}  // namespace tavrix
