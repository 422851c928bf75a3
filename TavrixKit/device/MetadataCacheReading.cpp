// The two forms in which a cache is read: JSON Lines, and the one object of earlier versions.

#include <algorithm>
#include <cmath>
#include <vector>

#include "device/CacheLine.h"
#include "device/MetadataCache.h"
#include "foundation/json/JsonValue.h"

namespace tavrix {
namespace {

/// No record is longer; what is, is damage.
constexpr std::size_t maxLineBytes = 64 * 1024;

/// Hands on the lines of a file without their line feeds; those that are too long are left out.
template <typename Receiver>
void readLines(ByteReader& file, const Receiver& receiver) {
  std::vector<char> buffer(std::size_t{1} << 18U);
  std::string begun;  // what came of a line before its end
  const auto end = [&](std::string_view rest) {
    const std::string_view line = begun.empty() ? rest : std::string_view{begun.append(rest)};
    if (line.size() <= maxLineBytes) receiver(line);
    begun.clear();
  };
  for (std::size_t count = 0; (count = file.read(buffer)) > 0;) {
    std::string_view piece{buffer.data(), count};
    for (std::size_t at = 0; (at = piece.find('\n')) != std::string_view::npos;) {
      end(piece.substr(0, at));
      piece.remove_prefix(at + 1);
    }
    if (begun.size() <= maxLineBytes) begun += piece;
  }
  end({});
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
  readLines(file, [&](std::string_view line) {
    auto item = recordOfLine(line);
    if (!item || MetadataCache::isIncomplete(*item)) return;
    std::string key = MetadataCache::key(*item);
    MetadataCache::add(records, std::move(key), *std::move(item));
  });
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
