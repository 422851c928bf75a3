#include "sample/ExifSegment.h"

#include <fmt/format.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <string_view>
#include <vector>

namespace tavrix {
namespace {

/// Field types of TIFF 6.0.
enum class FieldType : std::uint16_t {
  byte = 1,
  ascii = 2,
  uint16 = 3,
  uint32 = 4,
  rational = 5,
  undefined = 7
};

std::string bigEndian(std::uint32_t value, int bytes) {
  std::string text;
  for (int shift = (bytes - 1) * 8; shift >= 0; shift -= 8) {
    text += static_cast<char>(static_cast<unsigned char>(value >> static_cast<unsigned>(shift)));
  }
  return text;
}

struct Rational {
  std::uint32_t numerator;
  std::uint32_t denominator;
};

/// One image file directory (TIFF 6.0) being built: entries of 12 bytes, followed by the values
/// longer than 4 bytes. Entries must be added in tag order.
class Directory {
 public:
  void add(std::uint16_t tag, FieldType type, std::size_t count, std::string value) {
    entries_.push_back({tag, type, static_cast<std::uint32_t>(count), std::move(value)});
  }
  void addText(std::uint16_t tag, std::string text) {
    text += '\0';
    add(tag, FieldType::ascii, text.size(), text);
  }
  void addUndefined(std::uint16_t tag, const std::string& bytes) {
    add(tag, FieldType::undefined, bytes.size(), bytes);
  }
  void addUint16(std::uint16_t tag, std::uint32_t value) {
    add(tag, FieldType::uint16, 1, bigEndian(value, 2));
  }
  void addUint32(std::uint16_t tag, std::uint32_t value) {
    add(tag, FieldType::uint32, 1, bigEndian(value, 4));
  }
  void addRationals(std::uint16_t tag, const std::vector<Rational>& values) {
    std::string bytes;
    for (const auto& [numerator, denominator] : values) {
      bytes += bigEndian(numerator, 4) + bigEndian(denominator, 4);
    }
    add(tag, FieldType::rational, values.size(), bytes);
  }

  /// Returns the bytes of a directory that begins at `offset` in the TIFF block.
  std::string bytesAt(std::size_t offset) const {
    std::string table = bigEndian(static_cast<std::uint32_t>(entries_.size()), 2);
    std::string values;
    const std::size_t valuesOffset = offset + 2 + entries_.size() * 12 + 4;
    for (const Entry& entry : entries_) {
      table += bigEndian(entry.tag, 2) + bigEndian(static_cast<std::uint32_t>(entry.type), 2) +
               bigEndian(entry.count, 4);
      std::string value = entry.value;
      if (value.size() <= 4) {
        value.resize(4, '\0');
        table += value;
        continue;
      }
      if (value.size() % 2 != 0) value += '\0';
      table += bigEndian(static_cast<std::uint32_t>(valuesOffset + values.size()), 4);
      values += value;
    }
    return table + bigEndian(0, 4) + values;
  }

 private:
  struct Entry {
    std::uint16_t tag;
    FieldType type;
    std::uint32_t count;
    std::string value;
  };
  std::vector<Entry> entries_;
};

constexpr double unitsPerDegree = 360'000;  // hundredths of an arc second

std::vector<Rational> degreesMinutesSeconds(double degrees) {
  const auto units = static_cast<std::uint32_t>(std::llround(std::abs(degrees) * unitsPerDegree));
  return {{units / 360'000, 1}, {units / 6000 % 60, 1}, {units % 6000, 100}};
}

Directory captureDirectory(const ExifData& data) {
  Directory directory;
  directory.addUndefined(0x9000, "0232");  // ExifVersion
  directory.addText(0x9003, exifDateText(data.taken));
  directory.addText(0x9011, exifOffsetText(data.utcOffset));
  directory.addUint32(0xA002, static_cast<std::uint32_t>(data.width));
  directory.addUint32(0xA003, static_cast<std::uint32_t>(data.height));
  return directory;
}

Directory positionDirectory(const GeoPoint& place) {
  Directory directory;
  directory.add(0x0000, FieldType::byte, 4, std::string{"\2\3\0\0", 4});  // GPSVersionID
  directory.addText(0x0001, place.latitude < 0 ? "S" : "N");
  directory.addRationals(0x0002, degreesMinutesSeconds(place.latitude));
  directory.addText(0x0003, place.longitude < 0 ? "W" : "E");
  directory.addRationals(0x0004, degreesMinutesSeconds(place.longitude));
  return directory;
}

Directory mainDirectory(const ExifData& data, std::size_t captureOffset,
                        std::size_t positionOffset) {
  Directory directory;
  directory.addText(0x010F, "Tavrix");        // Make
  directory.addText(0x0110, "Sample phone");  // Model
  directory.addUint16(0x0112, 1);             // Orientation: as stored
  directory.addText(0x0132, exifDateText(data.taken));
  directory.addUint32(0x8769, static_cast<std::uint32_t>(captureOffset));
  if (data.place) directory.addUint32(0x8825, static_cast<std::uint32_t>(positionOffset));
  return directory;
}

}  // namespace

std::string exifDateText(LocalTime time) {
  const auto days = std::chrono::floor<std::chrono::days>(time);
  const CivilDate date{days};
  const std::chrono::hh_mm_ss clock{std::chrono::floor<std::chrono::seconds>(time - days)};
  return fmt::format("{:04}:{:02}:{:02} {:02}:{:02}:{:02}", static_cast<int>(date.year()),
                     static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                     clock.hours().count(), clock.minutes().count(), clock.seconds().count());
}

std::string exifOffsetText(std::chrono::minutes utcOffset) {
  const auto minutes = std::abs(utcOffset.count());
  return fmt::format("{}{:02}:{:02}", utcOffset.count() < 0 ? '-' : '+', minutes / 60,
                     minutes % 60);
}

GeoPoint exifRounded(const GeoPoint& point) {
  const auto rounded = [](double degrees) {
    return std::round(degrees * unitsPerDegree) / unitsPerDegree;
  };
  return {rounded(point.latitude), rounded(point.longitude)};
}

std::string exifSegment(const ExifData& data) {
  const std::string tiffHeader = std::string{"MM\0\x2A", 4} + bigEndian(8, 4);
  const std::size_t mainSize = mainDirectory(data, 0, 0).bytesAt(0).size();
  const std::size_t captureOffset = tiffHeader.size() + mainSize;
  const std::string capture = captureDirectory(data).bytesAt(captureOffset);
  const std::size_t positionOffset = captureOffset + capture.size();
  std::string segment{"Exif\0\0", 6};
  segment += tiffHeader;
  segment += mainDirectory(data, captureOffset, positionOffset).bytesAt(tiffHeader.size());
  segment += capture;
  if (data.place) segment += positionDirectory(*data.place).bytesAt(positionOffset);
  return segment;
}

}  // namespace tavrix
