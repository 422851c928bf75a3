// Readers of the two cache formats: JSON Lines, and the single JSON object of earlier versions.

#include <algorithm>
#include <cmath>
#include <vector>

#include "device/metadata/CacheLine.h"
#include "device/metadata/MetadataCache.h"
#include "foundation/json/JsonValue.h"

namespace tavrix {
namespace {

/// No record is longer; a longer line is damage.
constexpr std::size_t maxLineBytes = 64 * 1024;

/// Passes the lines of a file to `receiver` without their line feeds. Leaves out lines that are too
/// long.
template <typename Receiver>
void readLines(ByteReader& file, const Receiver& receiver) {
  std::vector<char> buffer(std::size_t{1} << 18U);
  std::string begun;  // the part of a line read so far
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

bool assign(const JsonValue& value, std::optional<std::string>& field) {
  if (const std::string* const text = value.asString()) field = *text;
  return field.has_value();
}

bool assign(const JsonValue& value, std::optional<bool>& field) {
  if (const bool* const flag = value.asBool()) field = *flag;
  return field.has_value();
}

bool assign(const JsonValue& value, std::optional<double>& field) {
  field = value.asNumber();
  return field.has_value();
}

/// Also accepts a whole number written with a point or an exponent.
bool assign(const JsonValue& value, std::optional<std::uint64_t>& field) {
  field = value.asUnsigned();
  const auto number = value.asNumber();
  if (!field && number && *number >= 0 && *number < 0x1p64 && *number == std::floor(*number)) {
    field = static_cast<std::uint64_t>(*number);
  }
  return field.has_value();
}

bool assign(const JsonValue& value, std::optional<std::int64_t>& field) {
  const auto number = value.asNumber();
  if (const auto whole = value.asUnsigned(); whole && *whole <= INT64_MAX) {
    field = static_cast<std::int64_t>(*whole);
  } else if (number && std::abs(*number) < 0x1p53 && *number == std::floor(*number)) {
    field = static_cast<std::int64_t>(*number);
  }
  return field.has_value();
}

/// Takes the members of a legacy record by the same rules as the fields of a line.
class RecordMembers {
 public:
  explicit RecordMembers(const JsonValue& record) : record_(record) {}

  /// Leaves the field empty if the member is absent or null.
  template <typename Value>
  bool take(std::string_view key, std::optional<Value>& field) const {
    const JsonValue* const value = record_.member(key);
    return value == nullptr || value->isNull() || assign(*value, field);
  }
  template <typename Value>
  bool takeRequired(std::string_view key, Value& field) const {
    std::optional<Value> value;
    if (!take(key, value) || !value) return false;
    field = *std::move(value);
    return true;
  }

 private:
  const JsonValue& record_;
};

/// Returns nullopt if a member has another type than its field. If only the member were dropped,
/// the file would never be read again.
std::optional<SnapshotItem> itemOf(const JsonValue& record) {
  const RecordMembers members{record};
  std::optional<SnapshotItem> item{std::in_place};
  const bool isRecord =
      members.takeRequired("name", item->name) && members.takeRequired("kind", item->kind) &&
      members.takeRequired("size", item->size) && members.take("dir", item->dir) &&
      members.take("itemDate", item->itemDate) && members.take("exifDate", item->exifDate) &&
      members.take("exifOffset", item->exifOffset) && members.take("lat", item->lat) &&
      members.take("lon", item->lon) && members.take("px", item->px) &&
      members.take("py", item->py) && members.take("cam", item->cam) &&
      members.take("contentID", item->contentID);
  if (!isRecord) item.reset();
  return item;
}

}  // namespace

MetadataCache::Records readJsonLines(ByteReader& file, std::uint64_t fileBytes) {
  // The approximate length of a line, and an upper limit for files of any size.
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
    if (cache.records.empty() && !records->asObject()->empty()) return std::nullopt;
    return cache;
  } catch (const JsonError&) {
    return std::nullopt;
  }
}

}  // namespace tavrix
