#include "foundation/json/JsonValue.h"

#include <utility>

namespace tavrix {
namespace {

/// Passes on the elements of the outermost list, one by one.
class ElementReader : public JsonHandler {
 public:
  explicit ElementReader(const std::function<void(JsonValue)>& take) : take_(take) {}

  bool null() override {
    return value([](JsonHandler& to) { return to.null(); });
  }
  bool boolean(bool flag) override {
    return value([=](JsonHandler& to) { return to.boolean(flag); });
  }
  bool integer(std::int64_t number) override {
    return value([=](JsonHandler& to) { return to.integer(number); });
  }
  bool unsignedInteger(std::uint64_t number) override {
    return value([=](JsonHandler& to) { return to.unsignedInteger(number); });
  }
  bool number(double number) override {
    return value([=](JsonHandler& to) { return to.number(number); });
  }
  bool string(std::string_view text) override {
    return value([=](JsonHandler& to) { return to.string(text); });
  }
  bool key(std::string_view name) override { return element_.key(name); }
  bool startObject() override {
    return value([](JsonHandler& to) { return to.startObject(); });
  }
  bool endObject() override {
    return value([](JsonHandler& to) { return to.endObject(); });
  }
  bool startArray() override {
    if (!std::exchange(hasBegun_, true)) return true;
    return value([](JsonHandler& to) { return to.startArray(); });
  }
  bool endArray() override {
    if (!element_.isOpen()) return true;
    return value([](JsonHandler& to) { return to.endArray(); });
  }

 private:
  template <typename Feed>
  bool value(Feed feed) {
    if (!hasBegun_ || !feed(element_)) return false;
    if (!element_.isOpen()) take_(element_.take());
    return true;
  }

  const std::function<void(JsonValue)>& take_;
  bool hasBegun_ = false;
  JsonValueBuilder element_;
};

}  // namespace

JsonValue JsonValueBuilder::take() { return std::exchange(root_, {}); }

bool JsonValueBuilder::key(std::string_view name) {
  key_ = name;
  return true;
}

/// Stores a value at its position in the document and returns a reference to it.
JsonValue& JsonValueBuilder::place(JsonValue value) {
  if (open_.empty()) return root_ = std::move(value);
  if (auto* array = std::get_if<JsonValue::Array>(&open_.back()->data)) {
    return array->emplace_back(std::move(value));
  }
  return std::get<JsonValue::Object>(open_.back()->data)[key_] = std::move(value);
}

bool JsonValueBuilder::add(JsonValue value) {
  place(std::move(value));
  return true;
}

bool JsonValueBuilder::open(JsonValue value) {
  open_.push_back(&place(std::move(value)));
  return true;
}

bool JsonValueBuilder::close() {
  open_.pop_back();
  return true;
}

std::optional<double> JsonValue::asNumber() const {
  if (const auto* value = std::get_if<std::int64_t>(&data)) return static_cast<double>(*value);
  if (const auto* value = std::get_if<std::uint64_t>(&data)) return static_cast<double>(*value);
  if (const auto* value = std::get_if<double>(&data)) return *value;
  return std::nullopt;
}

std::optional<std::uint64_t> JsonValue::asUnsigned() const {
  if (const auto* value = std::get_if<std::uint64_t>(&data)) return *value;
  return std::nullopt;
}

const JsonValue* JsonValue::member(std::string_view key) const {
  const auto* object = asObject();
  if (object == nullptr) return nullptr;
  const auto found = object->find(key);
  return found == object->end() ? nullptr : &found->second;
}

JsonValue parseJson(std::string_view text, const JsonLimits& limits) {
  JsonValueBuilder builder;
  readJson(text, builder, limits);
  return builder.take();
}

void readJsonElements(ByteReader& source, const std::function<void(JsonValue element)>& take,
                      const JsonLimits& limits) {
  ElementReader reader{take};
  readJson(source, reader, limits);
}

}  // namespace tavrix
