#pragma once

#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tavrix {

/// A destination for text. write() may throw; JsonWriter does not catch the exception.
class TextSink {
 public:
  virtual ~TextSink() = default;
  virtual void write(std::string_view text) = 0;
};

class StringSink : public TextSink {
 public:
  void write(std::string_view text) override { text_ += text; }
  const std::string& text() const { return text_; }

 private:
  std::string text_;
};

/// The layout of a document: pretty-printed with indents of two spaces, or on one line.
enum class JsonLayout { pretty, line };

/// Writes one JSON document. Does not escape slashes, writes doubles in their shortest form and
/// replaces ill-formed UTF-8 by U+FFFD. Keys are written in the order of the calls. The calls must
/// form one complete value; finish() ends the document with a line break.
class JsonWriter {
 public:
  explicit JsonWriter(TextSink& sink, JsonLayout layout = JsonLayout::pretty)
      : sink_(sink), layout_(layout) {}

  JsonWriter& beginObject() { return begin('{'); }
  JsonWriter& endObject() { return end('}'); }
  JsonWriter& beginArray() { return begin('['); }
  JsonWriter& endArray() { return end(']'); }
  JsonWriter& key(std::string_view name);

  JsonWriter& value(std::string_view text);
  JsonWriter& value(const std::string& text) { return value(std::string_view{text}); }
  JsonWriter& value(const char* text) { return value(std::string_view{text}); }
  JsonWriter& value(bool flag);
  JsonWriter& value(double number);  ///< writes null if the number is not finite
  template <std::integral T>
  JsonWriter& value(T number) {
    if constexpr (std::signed_integral<T>) return wholeNumber(static_cast<std::int64_t>(number));
    return wholeNumber(static_cast<std::uint64_t>(number));
  }

  template <typename T>
  JsonWriter& field(std::string_view name, const T& content) {
    return key(name).value(content);
  }
  /// Omits the field if there is no value.
  template <typename T>
  JsonWriter& field(std::string_view name, const std::optional<T>& content) {
    return content ? key(name).value(*content) : *this;
  }

  void finish();

 private:
  struct Level {
    bool isEmpty = true;
  };

  JsonWriter& begin(char bracket);
  JsonWriter& end(char bracket);
  JsonWriter& wholeNumber(std::int64_t number);
  JsonWriter& wholeNumber(std::uint64_t number);
  JsonWriter& raw(std::string_view text);
  void beforeValue();
  void newLine();
  void quoted(std::string_view text);
  void flushWhenLarge();

  TextSink& sink_;
  JsonLayout layout_;
  std::string buffer_;
  std::vector<Level> levels_;
  bool afterKey_ = false;
};

}  // namespace tavrix
