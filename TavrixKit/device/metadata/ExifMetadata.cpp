#include "device/metadata/ExifMetadata.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "foundation/Text.h"

namespace tavrix {
namespace {

using Directory = TiffBlock::Directory;

namespace tag {
constexpr std::uint16_t exifDirectory = 0x8769;
constexpr std::uint16_t gpsDirectory = 0x8825;
constexpr std::uint16_t dateTimeOriginal = 0x9003;
constexpr std::uint16_t dateTimeDigitized = 0x9004;
constexpr std::uint16_t offsetTimeOriginal = 0x9011;
constexpr std::uint16_t offsetTimeDigitized = 0x9012;
constexpr std::uint16_t makerNote = 0x927C;
constexpr std::uint16_t contentIdentifier = 0x0011;  // in the maker note of an iPhone
constexpr std::uint16_t gpsLatitudeRef = 1;
constexpr std::uint16_t gpsLatitude = 2;
constexpr std::uint16_t gpsLongitudeRef = 3;
constexpr std::uint16_t gpsLongitude = 4;
}  // namespace tag

/// Exposure time, f-number, sensitivity, focal length, lens range, lens maker, lens model.
constexpr std::array<std::uint16_t, 7> captureTags{0x829A, 0x829D, 0x8827, 0x920A,
                                                   0xA432, 0xA433, 0xA434};

std::optional<std::string> textOf(const TiffBlock& block, const Directory& directory,
                                  std::uint16_t tag) {
  const TiffBlock::Field* const field = TiffBlock::find(directory, tag);
  return field == nullptr ? std::nullopt : block.text(*field);
}

Directory subdirectory(const TiffBlock& block, const Directory& parent, std::uint16_t tag) {
  const TiffBlock::Field* const field = TiffBlock::find(parent, tag);
  const auto offset = field == nullptr ? std::nullopt : block.number(*field);
  return offset ? block.directory(*offset) : Directory{};
}

/// Returns the date of a field, without any text after it, if the date exists in the calendar.
std::optional<std::string> dateOf(const TiffBlock& block, const Directory& directory,
                                  std::uint16_t tag) {
  constexpr std::size_t length = 19;
  auto date = textOf(block, directory, tag);
  if (!date || date->size() < length) return std::nullopt;
  date->resize(length);
  return instantOfExif(*date, std::nullopt, TimeZone::utc()) ? date : std::nullopt;
}

std::optional<std::string> offsetOf(const TiffBlock& block, const Directory& directory,
                                    std::uint16_t tag) {
  auto offset = textOf(block, directory, tag);
  if (!offset) return std::nullopt;
  offset->resize(offset->find_last_not_of(' ') + 1);
  return isExifOffset(*offset) ? offset : std::nullopt;
}

void readDate(const TiffBlock& block, const Directory& directory, MediaMetadata& metadata) {
  struct Pair {
    std::uint16_t date;
    std::uint16_t offset;
  };
  for (const Pair& pair : {Pair{tag::dateTimeOriginal, tag::offsetTimeOriginal},
                           Pair{tag::dateTimeDigitized, tag::offsetTimeDigitized}}) {
    if (metadata.exifDate) return;
    metadata.exifDate = dateOf(block, directory, pair.date);
    if (metadata.exifDate) metadata.exifOffset = offsetOf(block, directory, pair.offset);
  }
}

char upperCased(char letter) {
  return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

/// Returns the degrees of a field of up to three fractions: degrees, minutes and seconds. Only the
/// side of the globe decides the sign; `sides` has the letters of the positive and the negative
/// side.
std::optional<double> degreesOf(const TiffBlock& block, const Directory& gps, std::uint16_t tag,
                                std::uint16_t sideTag, std::string_view sides) {
  const TiffBlock::Field* const field = TiffBlock::find(gps, tag);
  const auto side = textOf(block, gps, sideTag);
  if (field == nullptr || !side || side->empty()) return std::nullopt;
  const auto found = sides.find(upperCased(side->front()));
  if (found == std::string_view::npos) return std::nullopt;
  double value = 0;
  double unit = 1;
  for (std::uint32_t i = 0; i < std::min<std::uint32_t>(field->count, 3); ++i, unit *= 60) {
    const auto part = block.rational(*field, i);
    // A fraction such as 0/0 has no value, so the position is unknown.
    if (!part) return std::nullopt;
    value += *part / unit;
  }
  return found == 1 ? -std::abs(value) : std::abs(value);
}

void readPosition(const TiffBlock& block, const Directory& gps, MediaMetadata& metadata) {
  const auto lat = degreesOf(block, gps, tag::gpsLatitude, tag::gpsLatitudeRef, "NS");
  const auto lon = degreesOf(block, gps, tag::gpsLongitude, tag::gpsLongitudeRef, "EW");
  if (lat && lon) metadata.setPosition(*lat, *lon);
}

/// Reads the identifier that an iPhone writes into a still and its motion part: a text in its maker
/// note, which is a directory behind a heading, with offsets from the start of the note.
void readContentID(const TiffBlock& block, const Directory& exif, MediaMetadata& metadata) {
  constexpr std::string_view heading{"Apple iOS\0\0\1MM", 14};
  const TiffBlock::Field* const note = TiffBlock::find(exif, tag::makerNote);
  if (note == nullptr || note->count <= heading.size()) return;
  const std::uint64_t begin = block.begin() + note->valueAt;
  if (block.file().at(begin, heading.size()) != heading) return;
  const auto inside = TiffBlock::headless(block.file(), begin, note->count, false, heading.size());
  auto text = textOf(inside, inside.directory(inside.firstDirectory()), tag::contentIdentifier);
  if (text && !text->empty()) metadata.contentID = replacingInvalidUtf8(*text);
}

}  // namespace

void readExif(const TiffBlock& block, MediaMetadata& metadata) {
  const Directory main = block.directory(block.firstDirectory());
  const Directory exif = subdirectory(block, main, tag::exifDirectory);
  readDate(block, exif, metadata);
  // Raw pictures may have the dates in their first directory (TIFF/EP, ISO 12234-2).
  readDate(block, main, metadata);
  readPosition(block, subdirectory(block, main, tag::gpsDirectory), metadata);
  readContentID(block, exif, metadata);
  const auto tells = [&](std::uint16_t tag) {
    return TiffBlock::find(exif, tag) != nullptr || TiffBlock::find(main, tag) != nullptr;
  };
  metadata.cam = std::any_of(captureTags.begin(), captureTags.end(), tells);
}

}  // namespace tavrix
