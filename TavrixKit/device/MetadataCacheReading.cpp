// The two forms in which a cache is read: JSON Lines, and the one object of earlier versions.

#include <algorithm>
#include <cmath>
#include <deque>
#include <functional>
#include <future>
#include <span>
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
constexpr std::size_t listLines = 256;
/// What one thread decodes at once.
constexpr std::size_t blockBytes = 512 * 1024;
constexpr std::size_t blocksAtOnce = 4;

struct KeyedItem {
  std::string key;
  SnapshotItem item;
};

/// Decodes lines; damage costs only the lines that it is in.
class LineDecoder {
 public:
  std::vector<KeyedItem> decode(std::string_view block) {
    while (!block.empty()) {
      const std::size_t end = std::min(block.find('\n'), block.size());
      add(block.substr(0, end));
      block.remove_prefix(std::min(end + 1, block.size()));
    }
    decodeLines();
    return std::move(items_);
  }

 private:
  void add(std::string_view line) {
    const bool isBlank = line.find_first_not_of(" \r\t") == std::string_view::npos;
    if (isBlank || line.size() > maxLineBytes) return;
    lines_.push_back(line);
    if (lines_.size() == listLines) decodeLines();
  }

  void decodeLines() {
    const std::span<const std::string_view> all{lines_};
    if (auto items = itemsOf(all)) {
      for (SnapshotItem& item : *items) keep(std::move(item));
    } else {
      for (std::size_t i = 0; i < all.size(); ++i) {
        auto item = itemsOf(all.subspan(i, 1));
        if (item) keep(std::move(item->front()));
      }
    }
    lines_.clear();
  }

  /// One item a line; nothing when any line holds something else.
  std::optional<std::vector<SnapshotItem>> itemsOf(std::span<const std::string_view> lines) {
    list_ = "[";
    for (const std::string_view line : lines)
      list_.append(list_.size() == 1 ? "" : ",").append(line);
    TextReader reader{list_ += ']'};
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
    items_.push_back({std::move(key), std::move(item)});
  }

  std::string list_;
  std::vector<std::string_view> lines_;
  std::vector<KeyedItem> items_;
};

/// Calls back with the text of a file in blocks of whole lines; a line that is longer than a block
/// is left out.
void readBlocks(ByteReader& file, const std::function<void(std::string&&)>& receiver) {
  std::string block;
  std::vector<char> buffer(std::size_t{1} << 18U);
  bool isInsideLine = false;  // of one whose beginning was dropped
  for (std::size_t count = 0; (count = file.read(buffer)) > 0;) {
    std::string_view piece{buffer.data(), count};
    if (isInsideLine) {
      const auto end = piece.find('\n');
      isInsideLine = end == std::string_view::npos;
      piece.remove_prefix(isInsideLine ? piece.size() : end + 1);
    }
    block += piece;
    if (block.size() < blockBytes) continue;
    const auto end = block.rfind('\n');
    isInsideLine = end == std::string::npos;
    std::string rest = isInsideLine ? std::string{} : block.substr(end + 1);
    if (!isInsideLine) {
      block.resize(end + 1);
      receiver(std::move(block));
    }
    block = std::move(rest);
  }
  receiver(std::move(block));
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

MetadataCache::Records readJsonLines(ByteReader& file, std::uint64_t fileBytes) {
  // About what a line has; and a bound, whatever the size of the file.
  constexpr std::uint64_t lineBytes = 180;
  constexpr std::uint64_t mostExpected = 1'000'000;
  MetadataCache::Records records;
  records.reserve(static_cast<std::size_t>(std::min(fileBytes / lineBytes, mostExpected)));
  std::deque<std::future<std::vector<KeyedItem>>> decoding;
  const auto takeFirst = [&] {
    std::vector<KeyedItem> items = decoding.front().get();
    decoding.pop_front();
    for (auto& [key, item] : items) MetadataCache::add(records, std::move(key), std::move(item));
  };
  readBlocks(file, [&](std::string&& block) {
    if (decoding.size() == blocksAtOnce) takeFirst();
    decoding.push_back(std::async(
        std::launch::async, [text = std::move(block)] { return LineDecoder{}.decode(text); }));
  });
  while (!decoding.empty()) takeFirst();
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
