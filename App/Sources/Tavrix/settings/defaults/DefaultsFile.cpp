#include "settings/defaults/DefaultsFile.h"

#include <limits>
#include <type_traits>

namespace tavrix {

void writeValue(JsonWriter& json, const JsonValue& value) {
  const auto write = [&](const auto& data) {
    using Data = std::decay_t<decltype(data)>;
    if constexpr (std::is_same_v<Data, std::nullptr_t>) {
      json.value(std::numeric_limits<double>::quiet_NaN());
    } else if constexpr (std::is_same_v<Data, JsonValue::Array>) {
      json.beginArray();
      for (const JsonValue& element : data) writeValue(json, element);
      json.endArray();
    } else if constexpr (std::is_same_v<Data, JsonValue::Object>) {
      json.beginObject();
      for (const auto& [key, member] : data) {
        json.key(key);
        writeValue(json, member);
      }
      json.endObject();
    } else {
      json.value(data);
    }
  };
  std::visit(write, value.data);
}

namespace DefaultsFile {

std::string encode(const DefaultsObjects& objects) {
  StringSink sink;
  JsonWriter json{sink};
  writeValue(json, {objects});
  json.finish();
  return sink.text();
}

DefaultsObjects decode(std::string_view text) {
  JsonValue json = parseJson(text);
  auto* const objects = std::get_if<DefaultsObjects>(&json.data);
  if (objects == nullptr) throw JsonError{JsonError::Kind::rejected, {}};
  return std::move(*objects);
}

}  // namespace DefaultsFile

}  // namespace tavrix
