#include "archives/ZipRecords.h"

#include <algorithm>
#include <limits>
#include <optional>

#include "foundation/Text.h"

namespace tavrix {
namespace {

constexpr std::uint64_t most16 = std::numeric_limits<std::uint16_t>::max();
constexpr std::uint64_t most32 = std::numeric_limits<std::uint32_t>::max();
constexpr std::size_t longestName = most16;

constexpr std::uint16_t versionPlain = 20;
constexpr std::uint16_t versionZip64 = 45;
constexpr std::uint16_t madeOnUnix = 3U << 8U;
constexpr std::uint16_t namesAreUtf8 = 1U << 11U;
constexpr std::uint16_t stored = 0;
constexpr std::uint32_t regularFile = 0100000;
constexpr std::uint16_t zip64Field = 0x0001;
constexpr std::uint16_t timeField = 0x5455;

/// A record built from numbers in little-endian order.
class Record {
 public:
  Record& u8(std::uint64_t value) { return number(value, 1); }
  Record& u16(std::uint64_t value) { return number(value, 2); }
  Record& u32(std::uint64_t value) { return number(value, 4); }
  Record& u64(std::uint64_t value) { return number(value, 8); }
  /// Appends 32 bits, all set if the value is in the ZIP64 field.
  Record& u32OrMarker(std::uint64_t value) { return u32(std::min(value, most32)); }
  Record& text(std::string_view value) {
    bytes_ += value;
    return *this;
  }
  std::string take() { return std::move(bytes_); }

 private:
  Record& number(std::uint64_t value, int count) {
    for (int i = 0; i < count; ++i, value >>= 8U) bytes_ += static_cast<char>(value & 0xFFU);
    return *this;
  }

  std::string bytes_;
};

bool isLarge(std::uint64_t value) { return value >= most32; }

/// Returns MS-DOS date and time as one number, with a precision of two seconds, from 1980 to 2107.
std::uint32_t dosTime(Instant instant, const TimeZone& zone) {
  const LocalTime local = zone.toLocal(instant);
  const auto day = std::chrono::floor<std::chrono::days>(local);
  const std::chrono::year_month_day date{day};
  const int year = static_cast<int>(date.year());
  constexpr std::uint32_t earliest = (1U << 21U) | (1U << 16U);
  constexpr std::uint32_t latest =
      (127U << 25U) | (12U << 21U) | (31U << 16U) | (23U << 11U) | (59U << 5U) | 29U;
  if (year < 1980) return earliest;
  if (year > 2107) return latest;
  const std::chrono::hh_mm_ss time{std::chrono::floor<std::chrono::seconds>(local - day)};
  return (static_cast<std::uint32_t>(year - 1980) << 25U) |
         (static_cast<unsigned>(date.month()) << 21U) | (static_cast<unsigned>(date.day()) << 16U) |
         (static_cast<std::uint32_t>(time.hours().count()) << 11U) |
         (static_cast<std::uint32_t>(time.minutes().count()) << 5U) |
         static_cast<std::uint32_t>(time.seconds().count() / 2);
}

/// Returns the field of the modification time; empty for times that do not fit it.
std::string timeExtra(Instant instant) {
  const auto seconds = std::chrono::floor<std::chrono::seconds>(instant).time_since_epoch().count();
  if (seconds < std::numeric_limits<std::int32_t>::min() ||
      seconds > std::numeric_limits<std::int32_t>::max()) {
    return {};
  }
  constexpr std::uint8_t modificationTimeOnly = 1;
  return Record{}
      .u16(timeField)
      .u16(5)
      .u8(modificationTimeOnly)
      .u32(static_cast<std::uint32_t>(seconds))
      .take();
}

std::uint16_t versionOf(const ZippedEntry& zipped) {
  return isLarge(zipped.entry.size) || isLarge(zipped.offset) ? versionZip64 : versionPlain;
}

std::uint16_t flagsOf(const ZipEntry& entry) { return isAscii(entry.name) ? 0 : namesAreUtf8; }

/// Adds the fields that both records of an entry share, from the required version to the length of
/// the name.
void addCommon(Record& record, std::uint16_t version, const ZippedEntry& zipped,
               const TimeZone& zone) {
  const ZipEntry& entry = zipped.entry;
  record.u16(version)
      .u16(flagsOf(entry))
      .u16(stored)
      .u32(dosTime(entry.modified, zone))
      .u32(zipped.crc)
      .u32OrMarker(entry.size)
      .u32OrMarker(entry.size)
      .u16(entry.name.size());
}

bool isSafePart(std::string_view part) { return !part.empty() && part != "." && part != ".."; }

bool hasControlCharacter(std::string_view text) {
  return std::any_of(text.begin(), text.end(), [](char c) {
    const auto code = static_cast<unsigned char>(c);
    return code < 0x20 || code == 0x7F;
  });
}

}  // namespace

bool isSafeEntryName(std::string_view name) {
  if (name.size() > longestName || hasControlCharacter(name)) return false;
  // A drive letter of another system: "C:x".
  if (name.size() > 1 && name[1] == ':') return false;
  for (std::size_t begin = 0; begin <= name.size();) {
    const std::size_t end = std::min(name.find_first_of("/\\", begin), name.size());
    if (!isSafePart(name.substr(begin, end - begin))) return false;
    begin = end + 1;
  }
  return isAscii(name) || replacingInvalidUtf8(name) == name;
}

std::string ZipRecords::localHeader(const ZippedEntry& zipped, const TimeZone& zone) {
  const ZipEntry& entry = zipped.entry;
  std::string extra = timeExtra(entry.modified);
  if (isLarge(entry.size)) {
    // Unlike in the directory, the field has both sizes here.
    extra += Record{}.u16(zip64Field).u16(16).u64(entry.size).u64(entry.size).take();
  }
  Record record;
  record.u32(0x04034b50);
  addCommon(record, isLarge(entry.size) ? versionZip64 : versionPlain, zipped, zone);
  return record.u16(extra.size()).text(entry.name).text(extra).take();
}

std::string ZipRecords::directoryEntry(const ZippedEntry& zipped, const TimeZone& zone) {
  const ZipEntry& entry = zipped.entry;
  Record large;
  if (isLarge(entry.size)) large.u64(entry.size).u64(entry.size);
  if (isLarge(zipped.offset)) large.u64(zipped.offset);
  const std::string numbers = large.take();
  std::string extra = timeExtra(entry.modified);
  if (!numbers.empty()) {
    extra += Record{}.u16(zip64Field).u16(numbers.size()).text(numbers).take();
  }
  Record record;
  record.u32(0x02014b50).u16(madeOnUnix | versionZip64);
  addCommon(record, versionOf(zipped), zipped, zone);
  record.u16(extra.size()).u16(0).u16(0).u16(0);
  record.u32((regularFile | entry.permissions) << 16U).u32OrMarker(zipped.offset);
  return record.text(entry.name).text(extra).take();
}

std::string ZipRecords::directoryEnd(std::uint64_t entries, std::uint64_t bytes,
                                     std::uint64_t offset) {
  Record record;
  if (entries >= most16 || isLarge(bytes) || isLarge(offset)) {
    constexpr std::uint64_t restOfRecord = 44;
    record.u32(0x06064b50).u64(restOfRecord).u16(madeOnUnix | versionZip64).u16(versionZip64);
    record.u32(0).u32(0).u64(entries).u64(entries).u64(bytes).u64(offset);
    // The offset of that record: right after the directory.
    record.u32(0x07064b50).u32(0).u64(offset + bytes).u32(1);
  }
  const std::uint64_t shortEntries = std::min(entries, most16);
  record.u32(0x06054b50).u16(0).u16(0).u16(shortEntries).u16(shortEntries);
  return record.u32OrMarker(bytes).u32OrMarker(offset).u16(0).take();
}

}  // namespace tavrix
