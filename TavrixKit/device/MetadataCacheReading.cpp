// The two forms in which a cache is read: JSON Lines, and the one object of earlier versions.

#include <cmath>
#include <functional>
#include <vector>

#include "device/MetadataCache.h"
#include "foundation/json/JsonValue.h"
#include "foundation/json/TextReader.h"
#include "media/Snapshot.h"

namespace tavrix {
namespace {

/// No record is longer; what is, is damage.
constexpr std::size_t maxLineBytes = 64 * 1024;
/// Lines that are decoded together, as one list.
constexpr std::size_t blockLines = 256;

/// Collects lines and decodes them; damage costs only the lines that it is in.
class LineDecoder {
 public:
  explicit LineDecoder(MetadataCache::Records& records) : records_(records) {}

  void add(std::string&& line) {
    if (line.find_first_not_of(" \r\t") == std::string::npos) return;
    lines_.push_back(std::move(line));
    if (lines_.size() == blockLines) decode();
  }
  void decode() {
    auto items = itemsOf(lines_);
    if (!items) {
      items.emplace();
      for (const std::string& line : lines_) {
        auto item = itemsOf({line});
        if (item) items->push_back(std::move(item->front()));
      }
    }
    for (SnapshotItem& item : *items) keep(std::move(item));
    lines_.clear();
  }

 private:
  /// One item a line; nothing when any line holds something else.
  static std::optional<std::vector<SnapshotItem>> itemsOf(const std::vector<std::string>& lines) {
    std::string list = "[";
    for (const std::string& line : lines) list.append(list.size() == 1 ? "" : ",").append(line);
    TextReader reader{list += ']'};
    try {
      auto items = Snapshot::read(reader);
      if (items.size() == lines.size()) return items;
    } catch (const SnapshotError&) {
      return std::nullopt;
    }
    return std::nullopt;
  }

  void keep(SnapshotItem&& item) {
    if (MetadataCache::isIncomplete(item)) return;
    std::string key = MetadataCache::key(item);
    records_.insert_or_assign(std::move(key), std::move(item));
  }

  MetadataCache::Records& records_;
  std::vector<std::string> lines_;
};

/// Calls back with every line; of one that is too long, and of what the file's end cuts off at that
/// length, nothing is told.
void readLines(ByteReader& file, const std::function<void(std::string&&)>& receiver) {
  std::string line;
  bool isTooLong = false;
  std::vector<char> buffer(std::size_t{1} << 18U);
  for (std::size_t count = 0; (count = file.read(buffer)) > 0;) {
    std::string_view rest{buffer.data(), count};
    while (!rest.empty()) {
      const std::size_t end = rest.find('\n');
      const std::string_view piece = rest.substr(0, end);
      isTooLong = isTooLong || line.size() + piece.size() > maxLineBytes;
      if (!isTooLong) line += piece;
      if (end == std::string_view::npos) break;
      if (!isTooLong) receiver(std::move(line));
      line.clear();
      isTooLong = false;
      rest.remove_prefix(end + 1);
    }
  }
  if (!isTooLong) receiver(std::move(line));
}

std::optional<std::string> textMember(const JsonValue& object, std::string_view key) {
  const JsonValue* const value = object.member(key);
  const std::string* const text = value == nullptr ? nullptr : value->asString();
  return text == nullptr ? std::nullopt : std::optional{*text};
}

std::optional<double> numberMember(const JsonValue& object, std::string_view key) {
  const JsonValue* const value = object.member(key);
  return value == nullptr ? std::nullopt : value->asNumber();
}

/// A whole number up to 2^53.
std::optional<std::int64_t> wholeMember(const JsonValue& object, std::string_view key) {
  const auto number = numberMember(object, key);
  if (!number || std::abs(*number) > 0x1p53 || *number != std::floor(*number)) return std::nullopt;
  return static_cast<std::int64_t>(*number);
}

std::optional<SnapshotItem> itemOf(const JsonValue& object) {
  const auto name = textMember(object, "name");
  const auto kind = textMember(object, "kind");
  const auto size = wholeMember(object, "size");
  if (!name || !kind || !size || *size < 0) return std::nullopt;
  SnapshotItem item;
  item.name = *name;
  item.kind = *kind;
  item.size = static_cast<std::uint64_t>(*size);
  item.dir = textMember(object, "dir");
  item.itemDate = numberMember(object, "itemDate");
  item.exifDate = textMember(object, "exifDate");
  item.exifOffset = textMember(object, "exifOffset");
  item.lat = numberMember(object, "lat");
  item.lon = numberMember(object, "lon");
  item.px = wholeMember(object, "px");
  item.py = wholeMember(object, "py");
  const JsonValue* const cam = object.member("cam");
  if (cam != nullptr && cam->asBool() != nullptr) item.cam = *cam->asBool();
  return item;
}

}  // namespace

MetadataCache::Records readJsonLines(ByteReader& file) {
  MetadataCache::Records records;
  LineDecoder decoder{records};
  readLines(file, [&](std::string&& line) { decoder.add(std::move(line)); });
  decoder.decode();
  return records;
}

std::optional<MetadataCache> MetadataCache::decodeLegacy(std::string_view json) {
  try {
    const JsonValue document = parseJson(json);
    const JsonValue* const records = document.member("records");
    if (records == nullptr || records->asObject() == nullptr) return std::nullopt;
    MetadataCache cache;
    for (const auto& [key, value] : *records->asObject()) {
      if (auto item = itemOf(value)) cache.records.insert_or_assign(key, std::move(*item));
    }
    return cache;
  } catch (const JsonError&) {
    return std::nullopt;
  }
}

}  // namespace tavrix
