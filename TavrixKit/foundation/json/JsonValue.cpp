#include "foundation/json/JsonValue.h"

namespace tavrix {
namespace {

class Builder : public JsonHandler {
 public:
  JsonValue take() { return std::move(root_); }

  bool null() override { return add({nullptr}); }
  bool boolean(bool value) override { return add({value}); }
  bool integer(std::int64_t value) override { return add({value}); }
  bool unsignedInteger(std::uint64_t value) override { return add({value}); }
  bool number(double value) override { return add({value}); }
  bool string(std::string_view value) override { return add({std::string{value}}); }
  bool key(std::string_view name) override {
    key_ = name;
    return true;
  }
  bool startObject() override { return open({JsonValue::Object{}}); }
  bool startArray() override { return open({JsonValue::Array{}}); }
  bool endObject() override { return close(); }
  bool endArray() override { return close(); }

 private:
  /// Puts a value where the text has it and gives its place.
  JsonValue& place(JsonValue value) {
    if (open_.empty()) return root_ = std::move(value);
    if (auto* array = std::get_if<JsonValue::Array>(&open_.back()->data)) {
      return array->emplace_back(std::move(value));
    }
    return std::get<JsonValue::Object>(open_.back()->data)[key_] = std::move(value);
  }
  bool add(JsonValue value) {
    place(std::move(value));
    return true;
  }
  bool open(JsonValue value) {
    open_.push_back(&place(std::move(value)));
    return true;
  }
  bool close() {
    open_.pop_back();
    return true;
  }

  JsonValue root_;
  std::string key_;
  std::vector<JsonValue*> open_;
};

}  // namespace

std::optional<double> JsonValue::asNumber() const {
  if (const auto* value = std::get_if<std::int64_t>(&data)) return static_cast<double>(*value);
  if (const auto* value = std::get_if<std::uint64_t>(&data)) return static_cast<double>(*value);
  if (const auto* value = std::get_if<double>(&data)) return *value;
  return std::nullopt;
}

const JsonValue* JsonValue::member(std::string_view key) const {
  const auto* object = asObject();
  if (object == nullptr) return nullptr;
  const auto found = object->find(key);
  return found == object->end() ? nullptr : &found->second;
}

JsonValue parseJson(std::string_view text, const JsonLimits& limits) {
  Builder builder;
  readJson(text, builder, limits);
  return builder.take();
}

}  // namespace tavrix
