#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <span>
#include <string_view>

namespace tavrix {

/// A place in a text, for people: line and column count from 1, in bytes.
struct JsonPosition {
  std::uint64_t line = 1;
  std::uint64_t column = 1;

  friend bool operator==(const JsonPosition&, const JsonPosition&) = default;
};

/// Why a JSON text could not be read, and where.
class JsonError : public std::exception {
 public:
  enum class Kind {
    syntax,        ///< not JSON (RFC 8259), or not UTF-8
    tooDeep,       ///< nested deeper than the limits allow
    valueTooLong,  ///< one value, or one run of white space, longer than the limits allow
    rejected,      ///< the handler did not want it
  };

  JsonError(Kind kind, JsonPosition position) : kind_(kind), position_(position) {}
  Kind kind() const { return kind_; }
  JsonPosition position() const { return position_; }
  const char* what() const noexcept override { return "JsonError"; }

 private:
  Kind kind_;
  JsonPosition position_;
};

/// Where bytes come from. read() fills at most the buffer and gives how many bytes it wrote, 0 at
/// the end; it may throw, and the reader lets that pass.
class ByteReader {
 public:
  virtual ~ByteReader() = default;
  virtual std::size_t read(std::span<char> buffer) = 0;
};

/// The events of one JSON text in its order. A handler that gives false ends the reading with
/// JsonError::Kind::rejected. Texts are valid UTF-8 and valid during the call only.
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

/// What a text may ask of the reader; memory and stack stay bounded by these.
struct JsonLimits {
  int maxDepth = 64;
  std::size_t maxValueBytes = std::size_t{1} << 20U;
};

/// Reads one JSON text from beginning to end and hands its events to `handler`. Throws JsonError.
void readJson(ByteReader& source, JsonHandler& handler, const JsonLimits& limits = {});
void readJson(std::string_view text, JsonHandler& handler, const JsonLimits& limits = {});

}  // namespace tavrix
