#include "foundation/json/JsonReader.h"

#include "foundation/json/TextReader.h"

#include <absl/strings/charconv.h>
#include <rapidjson/error/error.h>
#include <rapidjson/reader.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <concepts>
#include <memory>
#include <optional>

#include "foundation/Text.h"

namespace tavrix {
namespace {

constexpr std::string_view byteOrderMark{"\xEF\xBB\xBF"};

/// A buffered stream of bytes for the parser. If a value is longer than allowed, the stream reports
/// the end of the text.
class InputStream {
 public:
  using Ch = char;

  InputStream(ByteReader& source, std::size_t maxValueBytes)
      : source_(source), maxValueBytes_(maxValueBytes) {
    refill();
    skipByteOrderMark();
  }

  char Peek() const { return *current_; }
  char Take() {
    const char c = *current_;
    if (++current_ == end_) refill();
    return c;
  }
  void skipWhitespace() {
    const char* at = current_;
    for (;;) {
      // The NUL after the last byte of the buffer ends this loop.
      while (*at == ' ' || *at == '\n' || *at == '\r' || *at == '\t') ++at;
      current_ = at;
      if (at != end_) return;
      refill();
      at = current_;
    }
  }
  std::size_t Tell() const { return offset_ + static_cast<std::size_t>(current_ - buffer_.data()); }

  // The parser's stream interface requires these for in-situ parsing; they are never called.
  char* PutBegin() { return nullptr; }
  void Put(char) {}
  void Flush() {}
  std::size_t PutEnd(char*) { return 0; }

  void valueEnded() { valueBegin_ = Tell(); }
  bool valueTooLong() const { return valueTooLong_; }
  /// After parsing: returns true if the parser took a NUL in the text for the end of the text.
  bool hasMore() const { return !ended_; }
  /// Returns true if the text begins with a part of a byte-order mark only.
  bool hasBrokenMark() const { return markBytes_ % byteOrderMark.size() != 0; }

  JsonPosition position() const {
    const char* const begin = buffer_.data();
    const auto lines = static_cast<std::uint64_t>(std::count(begin, current_, '\n'));
    const char* lineBegin = current_;
    while (lineBegin != begin && lineBegin[-1] != '\n') --lineBegin;
    const auto inBuffer = static_cast<std::uint64_t>(current_ - lineBegin);
    const auto columns = inBuffer + (lines == 0 ? columnsBefore_ : 0);
    // Editors do not show the mark as a column.
    return {line_ + lines, 1 + columns - (line_ + lines == 1 ? markBytes_ : 0)};
  }

 private:
  /// Byte by byte, since the source may hand out its first bytes one at a time.
  void skipByteOrderMark() {
    while (markBytes_ < byteOrderMark.size() && Peek() == byteOrderMark[markBytes_]) {
      Take();
      ++markBytes_;
    }
  }

  void refill() {
    rememberPosition();
    offset_ += static_cast<std::size_t>(end_ - buffer_.data());
    current_ = buffer_.data();
    std::size_t count = 0;
    if (offset_ > valueBegin_ + maxValueBytes_) {
      valueTooLong_ = true;
    } else {
      count = source_.read({buffer_.data(), buffer_.size() - 1});
    }
    ended_ = count == 0;
    buffer_[count] = '\0';
    end_ = buffer_.data() + std::max<std::size_t>(count, 1);
    if (ended_) end_ = buffer_.data() + 1;
  }

  void rememberPosition() {
    const char* const begin = buffer_.data();
    if (end_ == nullptr) {
      end_ = begin;
      return;
    }
    const auto lines = std::count(begin, static_cast<const char*>(end_), '\n');
    const char* lineBegin = end_;
    while (lineBegin != begin && lineBegin[-1] != '\n') --lineBegin;
    const auto columns = static_cast<std::uint64_t>(end_ - lineBegin);
    columnsBefore_ = lines == 0 ? columnsBefore_ + columns : columns;
    line_ += static_cast<std::uint64_t>(lines);
  }

  ByteReader& source_;
  std::size_t maxValueBytes_;
  std::array<char, 65536> buffer_;
  const char* current_ = nullptr;
  const char* end_ = nullptr;
  std::size_t offset_ = 0;
  std::size_t valueBegin_ = 0;
  std::size_t markBytes_ = 0;  ///< bytes of the byte-order mark that were skipped
  std::uint64_t line_ = 1;
  std::uint64_t columnsBefore_ = 0;
  bool ended_ = false;
  bool valueTooLong_ = false;
};

bool isWhole(std::string_view number) {
  return std::none_of(number.begin(), number.end(),
                      [](char c) { return c == '.' || c == 'e' || c == 'E'; });
}

}  // namespace
}  // namespace tavrix

/// The parser's own version reads the indents of a pretty-printed file one character at a time.
template <>
inline void rapidjson::SkipWhitespace(tavrix::InputStream& stream) {
  stream.skipWhitespace();
}

namespace tavrix {
namespace {

/// Returns nullopt if the number does not fit into T.
template <std::integral T>
std::optional<T> wholeNumber(const char* begin, const char* end) {
  T value = 0;
  const auto result = std::from_chars(begin, end, value);
  return result.ec == std::errc{} && result.ptr == end ? std::optional{value} : std::nullopt;
}

/// Returns the nearest double, or nullopt if the number is larger than any double.
std::optional<double> finiteNumber(const char* begin, const char* end) {
  double value = 0;
  if (std::from_chars(begin, end, value).ec == std::errc{}) return value;
  // Out of range can also mean too close to zero; only absl tells the two apart.
  const bool isInRange = absl::from_chars(begin, end, value).ec == std::errc{};
  return isInRange || std::abs(value) < 1 ? std::optional{value} : std::nullopt;
}

/// Returns true if an escape put half of a surrogate pair into a text that is otherwise UTF-8.
bool hasLoneSurrogate(std::string_view text) {
  if (isAscii(text)) return false;
  for (auto at = text.find('\xED'); at != std::string_view::npos; at = text.find('\xED', at + 1)) {
    if (static_cast<unsigned char>(text[at + 1]) >= 0xA0) return true;
  }
  return false;
}

/// Passes the parser's events on, counts the depth and notifies the stream at the end of a value.
class Adapter {
 public:
  Adapter(JsonHandler& handler, InputStream& stream, int maxDepth)
      : handler_(handler), stream_(stream), maxDepth_(maxDepth) {}

  bool Null() { return ended(handler_.null()); }
  bool Bool(bool value) { return ended(handler_.boolean(value)); }
  bool Int(int) { return false; }
  bool Uint(unsigned) { return false; }
  bool Int64(std::int64_t) { return false; }
  bool Uint64(std::uint64_t) { return false; }
  bool Double(double) { return false; }
  /// The parser has already checked the syntax. Its own conversion is not used: it reads outside
  /// its tables if a number has some hundred zeros after the point.
  bool RawNumber(const char* text, rapidjson::SizeType length, bool) {
    const char* const end = text + length;
    if (isWhole({text, length})) {
      if (const auto value = wholeNumber<std::uint64_t>(text, end)) {
        return ended(handler_.unsignedInteger(*value));
      }
      if (const auto value = wholeNumber<std::int64_t>(text, end)) {
        return ended(*value < 0 ? handler_.integer(*value) : handler_.unsignedInteger(0));
      }
    }
    const auto value = finiteNumber(text, end);
    return value ? ended(handler_.number(*value)) : refuse();
  }
  bool String(const char* text, rapidjson::SizeType length, bool) {
    return hasLoneSurrogate({text, length}) ? refuse() : ended(handler_.string({text, length}));
  }
  bool Key(const char* text, rapidjson::SizeType length, bool) {
    return hasLoneSurrogate({text, length}) ? refuse() : ended(handler_.key({text, length}));
  }
  bool StartObject() { return deeper() && ended(handler_.startObject()); }
  bool EndObject(rapidjson::SizeType) { return shallower(handler_.endObject()); }
  bool StartArray() { return deeper() && ended(handler_.startArray()); }
  bool EndArray(rapidjson::SizeType) { return shallower(handler_.endArray()); }

  bool tooDeep() const { return depth_ > maxDepth_; }
  /// Returns true if a number was too large or a text was not UTF-8, which the parser accepts.
  bool isIllFormed() const { return isIllFormed_; }

 private:
  bool refuse() {
    isIllFormed_ = true;
    return false;
  }
  bool ended(bool wanted) {
    stream_.valueEnded();
    return wanted;
  }
  bool deeper() { return ++depth_ <= maxDepth_; }
  bool shallower(bool wanted) {
    --depth_;
    return ended(wanted);
  }

  JsonHandler& handler_;
  InputStream& stream_;
  int maxDepth_;
  int depth_ = 0;
  bool isIllFormed_ = false;
};

JsonError::Kind kindOf(const rapidjson::ParseResult& result, const InputStream& stream,
                       const Adapter& adapter) {
  if (stream.valueTooLong()) return JsonError::Kind::valueTooLong;
  if (adapter.tooDeep()) return JsonError::Kind::tooDeep;
  const bool isRejected =
      result.Code() == rapidjson::kParseErrorTermination && !adapter.isIllFormed();
  return isRejected ? JsonError::Kind::rejected : JsonError::Kind::syntax;
}

}  // namespace

std::string_view withoutByteOrderMark(std::string_view text) {
  if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
  return text;
}

void readJson(ByteReader& source, JsonHandler& handler, const JsonLimits& limits) {
  constexpr unsigned flags = rapidjson::kParseNumbersAsStringsFlag |
                             rapidjson::kParseValidateEncodingFlag | rapidjson::kParseIterativeFlag;
  const auto stream = std::make_unique<InputStream>(source, limits.maxValueBytes);
  if (stream->hasBrokenMark()) throw JsonError{JsonError::Kind::syntax, {}};
  Adapter adapter{handler, *stream, limits.maxDepth};
  rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>> reader;
  const rapidjson::ParseResult result = reader.Parse<flags>(*stream, adapter);
  // If the stream gave up, the parser may have accepted the part before that as a whole text.
  if (result.IsError() || stream->valueTooLong()) {
    throw JsonError{kindOf(result, *stream, adapter), stream->position()};
  }
  if (stream->hasMore()) throw JsonError{JsonError::Kind::syntax, stream->position()};
}

void readJson(std::string_view text, JsonHandler& handler, const JsonLimits& limits) {
  TextReader source{text};
  readJson(source, handler, limits);
}

}  // namespace tavrix
