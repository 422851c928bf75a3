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

/// A small JSON document in memory: settings, templates, contexts. If an object has a key twice,
/// the last value is kept.
struct JsonValue {
  using Array = std::vector<JsonValue>;
  using Object = std::map<std::string, JsonValue, std::less<>>;

  std::variant<std::nullptr_t, bool, std::int64_t, std::uint64_t, double, std::string, Array,
               Object>
      data = nullptr;

  bool isNull() const { return std::holds_alternative<std::nullptr_t>(data); }
  /// Return the value, or nullptr if it has another type.
  const bool* asBool() const { return std::get_if<bool>(&data); }
  const std::string* asString() const { return std::get_if<std::string>(&data); }
  const Array* asArray() const { return std::get_if<Array>(&data); }
  const Object* asObject() const { return std::get_if<Object>(&data); }
  /// Returns any number, whole or not. Returns nullopt if the value is not a number.
  std::optional<double> asNumber() const;
  /// Returns a member of an object, or nullptr if this is not an object or has no such member.
  const JsonValue* member(std::string_view key) const;
  /// Returns a whole number from 0 to 2^64 - 1. Returns nullopt for any other value.
  std::optional<std::uint64_t> asUnsigned() const;

  friend bool operator==(const JsonValue&, const JsonValue&) = default;
};

/// Builds a value from the events of a whole text, or of one value inside a larger text.
class JsonValueBuilder : public JsonHandler {
 public:
  /// Returns true if an object or array has begun and not yet ended.
  bool isOpen() const { return !open_.empty(); }
  /// Returns the value. The next event begins a new one.
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

/// Reads a document that is one list and passes each element to `take` as soon as it is read.
/// Throws JsonError; exceptions of `take` are not caught.
void readJsonElements(ByteReader& source, const std::function<void(JsonValue element)>& take,
                      const JsonLimits& limits = {});

}  // namespace tavrix
