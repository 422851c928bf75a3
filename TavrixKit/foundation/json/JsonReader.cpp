#include "foundation/json/JsonReader.h"

#include <rapidjson/error/error.h>
#include <rapidjson/reader.h>

#include <algorithm>
#include <array>
#include <memory>

namespace tavrix {
namespace {

/// Bytes for the parser, buffered. Past the longest value allowed it pretends that the text has
/// ended.
class InputStream {
 public:
  using Ch = char;

  InputStream(ByteReader& source, std::size_t maxValueBytes)
      : source_(source), maxValueBytes_(maxValueBytes) {
    refill();
  }

  char Peek() const { return *current_; }
  char Take() {
    const char c = *current_;
    if (++current_ == end_) refill();
    return c;
  }
  std::size_t Tell() const { return offset_ + static_cast<std::size_t>(current_ - buffer_.data()); }

  // The parser's interface asks for these, for output in place; they are never called.
  char* PutBegin() { return nullptr; }
  void Put(char) {}
  void Flush() {}
  std::size_t PutEnd(char*) { return 0; }

  void valueEnded() { valueBegin_ = Tell(); }
  bool valueTooLong() const { return valueTooLong_; }
  /// True when a NUL in the text made the parser believe that it had ended.
  bool hasMore() const { return !ended_; }

  JsonPosition position() const {
    const char* const begin = buffer_.data();
    const auto lines = static_cast<std::uint64_t>(std::count(begin, current_, '\n'));
    const char* lineBegin = current_;
    while (lineBegin != begin && lineBegin[-1] != '\n') --lineBegin;
    const auto inBuffer = static_cast<std::uint64_t>(current_ - lineBegin);
    return {line_ + lines, 1 + inBuffer + (lines == 0 ? columnsBefore_ : 0)};
  }

 private:
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
  std::uint64_t line_ = 1;
  std::uint64_t columnsBefore_ = 0;
  bool ended_ = false;
  bool valueTooLong_ = false;
};

/// Hands the parser's events on, counts the depth and tells the stream where values end.
class Adapter {
 public:
  Adapter(JsonHandler& handler, InputStream& stream, int maxDepth)
      : handler_(handler), stream_(stream), maxDepth_(maxDepth) {}

  bool Null() { return ended(handler_.null()); }
  bool Bool(bool value) { return ended(handler_.boolean(value)); }
  bool Int(int value) { return Int64(value); }
  bool Uint(unsigned value) { return ended(handler_.unsignedInteger(value)); }
  bool Int64(std::int64_t value) {
    return ended(value < 0 ? handler_.integer(value)
                           : handler_.unsignedInteger(static_cast<std::uint64_t>(value)));
  }
  bool Uint64(std::uint64_t value) { return ended(handler_.unsignedInteger(value)); }
  bool Double(double value) { return ended(handler_.number(value)); }
  bool RawNumber(const char*, rapidjson::SizeType, bool) { return false; }
  bool String(const char* text, rapidjson::SizeType length, bool) {
    return ended(handler_.string({text, length}));
  }
  bool Key(const char* text, rapidjson::SizeType length, bool) {
    return ended(handler_.key({text, length}));
  }
  bool StartObject() { return deeper() && ended(handler_.startObject()); }
  bool EndObject(rapidjson::SizeType) { return shallower(handler_.endObject()); }
  bool StartArray() { return deeper() && ended(handler_.startArray()); }
  bool EndArray(rapidjson::SizeType) { return shallower(handler_.endArray()); }

  bool tooDeep() const { return depth_ > maxDepth_; }

 private:
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
};

class TextReader : public ByteReader {
 public:
  explicit TextReader(std::string_view text) : rest_(text) {}

  std::size_t read(std::span<char> buffer) override {
    const std::size_t count = rest_.copy(buffer.data(), buffer.size());
    rest_.remove_prefix(count);
    return count;
  }

 private:
  std::string_view rest_;
};

JsonError::Kind kindOf(const rapidjson::ParseResult& result, const InputStream& stream,
                       const Adapter& adapter) {
  if (stream.valueTooLong()) return JsonError::Kind::valueTooLong;
  if (adapter.tooDeep()) return JsonError::Kind::tooDeep;
  return result.Code() == rapidjson::kParseErrorTermination ? JsonError::Kind::rejected
                                                            : JsonError::Kind::syntax;
}

}  // namespace

void readJson(ByteReader& source, JsonHandler& handler, const JsonLimits& limits) {
  constexpr unsigned flags = rapidjson::kParseFullPrecisionFlag |
                             rapidjson::kParseValidateEncodingFlag | rapidjson::kParseIterativeFlag;
  const auto stream = std::make_unique<InputStream>(source, limits.maxValueBytes);
  Adapter adapter{handler, *stream, limits.maxDepth};
  rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>> reader;
  const rapidjson::ParseResult result = reader.Parse<flags>(*stream, adapter);
  // Where the stream gave up, the parser may have found what came before to be a whole text.
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
