#include "device/metadata/CacheLine.h"

#include <charconv>
#include <cmath>
#include <string>

#include "foundation/Text.h"
#include "foundation/json/TextReader.h"
#include "media/Snapshot.h"

namespace tavrix {
namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// Parses a line without spaces and escapes from its start. If a member function returns false, the
/// line must go to the JSON reader.
class PlainLine {
 public:
  explicit PlainLine(std::string_view line) : rest_(line) {}

  bool isAtEnd() const { return rest_.empty(); }
  bool take(std::string_view text) {
    if (!rest_.starts_with(text)) return false;
    rest_.remove_prefix(text.size());
    return true;
  }
  bool take(std::string& value) {
    if (!take("\"")) return false;
    std::size_t end = 0;
    while (end < rest_.size() && isPlain(rest_[end])) ++end;
    value = rest_.substr(0, end);
    rest_.remove_prefix(end);
    return take("\"");
  }
  bool take(bool& value) {
    value = rest_.starts_with('t');
    return take(value ? "true" : "false");
  }
  /// Takes a whole number that is not negative.
  template <typename Number>
  bool takeWhole(Number& value) {
    if (!beginsAsNumber(rest_)) return false;
    return takeUpTo(std::from_chars(rest_.data(), rest_.data() + rest_.size(), value));
  }
  bool take(std::uint64_t& value) { return takeWhole(value); }
  bool take(std::int64_t& value) { return takeWhole(value); }
  bool take(double& value) {
    const std::string_view begin = rest_;
    const bool isNegative = begin.starts_with('-');
    if (!beginsAsNumber(begin.substr(isNegative ? 1 : 0))) return false;
    if (!takeUpTo(std::from_chars(begin.data(), begin.data() + begin.size(), value))) return false;
    const std::string_view text = begin.substr(0, begin.size() - rest_.size());
    const auto point = text.find('.');
    const bool isJson =
        isDigit(text.back()) && (point == std::string_view::npos || isDigit(text[point + 1]));
    return isJson && !(value == 0 && isNegative);
  }
  /// Takes a field and the comma after it. Returns true also if the field is absent.
  template <typename Value>
  bool takeField(std::string_view key, std::optional<Value>& value) {
    if (!take(key)) return true;
    return take(value.emplace()) && take(",");
  }

 private:
  static bool isPlain(char c) {
    return static_cast<unsigned char>(c) >= 0x20 && c != '"' && c != '\\';
  }
  /// Returns true if a number begins here; JSON does not allow leading zeros.
  static bool beginsAsNumber(std::string_view text) {
    return !text.empty() && isDigit(text[0]) &&
           !(text[0] == '0' && text.size() > 1 && isDigit(text[1]));
  }
  bool takeUpTo(const std::from_chars_result& result) {
    if (result.ec != std::errc{}) return false;
    rest_.remove_prefix(static_cast<std::size_t>(result.ptr - rest_.data()));
    return true;
  }

  std::string_view rest_;
};

std::optional<SnapshotItem> plainRecord(std::string_view text) {
  if (!isAscii(text) && replacingInvalidUtf8(text) != text) return std::nullopt;
  std::optional<SnapshotItem> item{std::in_place};
  PlainLine line{text};
  const bool isPlain =
      line.take("{") && line.takeField("\"cam\":", item->cam) &&
      line.takeField("\"dir\":", item->dir) && line.takeField("\"exifDate\":", item->exifDate) &&
      line.takeField("\"exifOffset\":", item->exifOffset) &&
      line.takeField("\"itemDate\":", item->itemDate) &&  //
      line.take("\"kind\":") && line.take(item->kind) && line.take(",") &&
      line.takeField("\"lat\":", item->lat) && line.takeField("\"lon\":", item->lon) &&
      line.take("\"name\":") && line.take(item->name) && line.take(",") &&
      line.takeField("\"px\":", item->px) && line.takeField("\"py\":", item->py) &&
      line.take("\"size\":") && line.take(item->size) && line.take("}") && line.isAtEnd();
  if (!isPlain) item.reset();
  return item;
}

std::optional<SnapshotItem> jsonRecord(std::string_view line) {
  std::string list;
  list.reserve(line.size() + 2);
  list.append("[").append(line).append("]");
  TextReader reader{list};
  try {
    auto items = Snapshot::read(reader);
    if (items.size() == 1) return std::move(items.front());
  } catch (const SnapshotError&) {
    return std::nullopt;
  }
  return std::nullopt;
}

}  // namespace

std::optional<SnapshotItem> recordOfLine(std::string_view line) {
  auto record = plainRecord(line);
  return record ? std::move(record) : jsonRecord(line);
}

}  // namespace tavrix
