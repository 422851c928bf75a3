#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <span>
#include <string_view>

namespace tavrix {

/// A position in a text, for the user: line and column, both from 1. The column is in bytes.
struct JsonPosition {
  std::uint64_t line = 1;
  std::uint64_t column = 1;

  friend bool operator==(const JsonPosition&, const JsonPosition&) = default;
};

/// Why reading a JSON text failed, and at which position.
class JsonError : public std::exception {
 public:
  enum class Kind {
    syntax,        ///< not JSON (RFC 8259), or not UTF-8
    tooDeep,       ///< nested deeper than the limits allow
    valueTooLong,  ///< one value, or one run of white space, is longer than the limits allow
    rejected,      ///< the handler returned false
  };

  JsonError(Kind kind, JsonPosition position) : kind_(kind), position_(position) {}
  Kind kind() const { return kind_; }
  JsonPosition position() const { return position_; }
  const char* what() const noexcept override { return "JsonError"; }

 private:
  Kind kind_;
  JsonPosition position_;
};

/// A source of bytes. read() writes at most `buffer.size()` bytes and returns their number, 0 at
/// the end. It may throw; readJson() does not catch the exception.
class ByteReader {
 public:
  virtual ~ByteReader() = default;
  virtual std::size_t read(std::span<char> buffer) = 0;
};

/// Receives the events of one JSON text in document order. If a function returns false, reading
/// ends with JsonError::Kind::rejected. Strings are valid UTF-8; the views are valid only during
/// the call.
class JsonHandler {
 public:
  virtual ~JsonHandler() = default;
  virtual bool null() = 0;
  virtual bool boolean(bool value) = 0;
  virtual bool integer(std::int64_t value) = 0;           ///< a whole number below 0
  virtual bool unsignedInteger(std::uint64_t value) = 0;  ///< a whole number from 0 to 2^64 - 1
  virtual bool number(double value) = 0;                  ///< any other number
  virtual bool string(std::string_view value) = 0;
  virtual bool key(std::string_view name) = 0;
  virtual bool startObject() = 0;
  virtual bool endObject() = 0;
  virtual bool startArray() = 0;
  virtual bool endArray() = 0;
};

/// Limits for a text; they bound the memory and the stack that reading needs.
struct JsonLimits {
  int maxDepth = 64;
  std::size_t maxValueBytes = std::size_t{1} << 20U;
};

/// Returns the text without a byte-order mark at its beginning, which some editors write.
std::string_view withoutByteOrderMark(std::string_view text);

/// Reads one JSON text from beginning to end and passes its events to `handler`. Skips a byte-order
/// mark at the beginning. Throws JsonError.
void readJson(ByteReader& source, JsonHandler& handler, const JsonLimits& limits = {});
void readJson(std::string_view text, JsonHandler& handler, const JsonLimits& limits = {});

}  // namespace tavrix
