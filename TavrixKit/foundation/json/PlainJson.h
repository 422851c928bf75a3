#pragma once

#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tavrix {

/// Reads a JSON text whose exact form is known in advance, from its start: the program's own
/// output, which is read several times faster this way than by readJson(). If a member function
/// returns false, the text has another form and the caller must pass the whole text to readJson().
/// readJson() would read everything that a member function accepts as the same value.
class PlainJson {
 public:
  explicit PlainJson(std::string_view text) : rest_(text) {}

  bool isAtEnd() const { return rest_.empty(); }
  /// Returns the number of bytes that are left.
  std::size_t size() const { return rest_.size(); }
  /// Takes these exact bytes.
  bool take(std::string_view text) {
    if (!rest_.starts_with(text)) return false;
    rest_.remove_prefix(text.size());
    return true;
  }
  /// Takes a string whose only escapes are those that JsonWriter prefers to \\u.
  bool take(std::string& value);
  bool take(bool& value);
  /// Takes a whole number from 0 on.
  bool take(std::uint64_t& value) { return takeWhole(value); }
  bool take(std::int64_t& value) { return takeWhole(value); }
  /// Takes any number except -0.
  bool take(double& value);
  /// Takes `key`, a value and `separator`. Returns true also if the text does not begin with `key`.
  template <typename Value>
  bool takeField(std::string_view key, std::optional<Value>& value, std::string_view separator) {
    if (!take(key)) return true;
    return take(value.emplace()) && take(separator);
  }

 private:
  bool takeEscaped(std::string& value);
  template <typename Number>
  bool takeWhole(Number& value) {
    return beginsAsNumber(rest_) &&
           takeUpTo(std::from_chars(rest_.data(), rest_.data() + rest_.size(), value));
  }
  /// Returns true if a number begins here; JSON does not allow leading zeros.
  static bool beginsAsNumber(std::string_view text);
  bool takeUpTo(const std::from_chars_result& result);

  std::string_view rest_;
};

}  // namespace tavrix
