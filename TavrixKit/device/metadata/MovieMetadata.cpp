// QuickTime File Format and ISO/IEC 14496-12: the box "moov" at either end of the file contains the
// film's header, its tracks, and metadata by key. The pictures themselves are never read.

#include <fmt/format.h>

#include <algorithm>

#include "device/metadata/Bytes.h"
#include "device/metadata/Containers.h"
#include "device/metadata/Iso6709.h"
#include "device/metadata/IsoBoxes.h"
#include "foundation/Text.h"

namespace tavrix {
namespace {

using namespace std::chrono;

constexpr std::string_view creationDateKey = "com.apple.quicktime.creationdate";
constexpr std::string_view contentKey = "com.apple.quicktime.content.identifier";
constexpr std::string_view locationKey = "com.apple.quicktime.location.ISO6709";
constexpr std::size_t maxValueBytes = 1024;
constexpr std::size_t maxKeys = 256;

/// Returns an ISO 8601 offset in the form of EXIF: "Z" becomes "+00:00"; "+08" and "+0800" become
/// "+08:00".
std::string exifOffsetOf(std::string_view text) {
  if (text == "Z") return "+00:00";
  std::string offset{text};
  if (offset.size() == 3) offset += "00";
  if (offset.size() == 5) offset.insert(3, ":");
  return offset;
}

/// Returns the text after the seconds without their fraction.
std::string_view withoutFraction(std::string_view text) {
  if (!text.starts_with('.') && !text.starts_with(',')) return text;
  return text.substr(std::min(text.find_first_not_of("0123456789", 1), text.size()));
}

/// Sets date and offset in the form of EXIF from a text such as "2019-02-12T15:27:12+0800", also
/// with a fraction of the second and other forms of the offset.
void setIsoDate(std::string_view text, MediaMetadata& metadata) {
  constexpr std::size_t dateBytes = 19;
  if (text.size() < dateBytes || text[10] != 'T') return;
  std::string date{text.substr(0, dateBytes)};
  date[4] = date[7] = ':';
  date[10] = ' ';
  if (!instantOfExif(date, std::nullopt, TimeZone::utc())) return;
  std::string offset = exifOffsetOf(withoutFraction(text.substr(dateBytes)));
  metadata.exifDate = std::move(date);
  if (isExifOffset(offset)) metadata.exifOffset = std::move(offset);
}

/// Sets the date from the film's header: seconds since 1904 in UTC. Some writers count from 1970.
void setHeaderDate(std::uint64_t value, MediaMetadata& metadata) {
  constexpr std::uint64_t secondsTo1970 = 2'082'844'800;
  if (value == 0) return;
  const auto count = value >= secondsTo1970 ? value - secondsTo1970 : value;
  const auto moment = instantFromUnixSeconds(static_cast<double>(count));
  if (!moment) return;
  const auto day = floor<days>(*moment);
  const year_month_day date{day};
  const hh_mm_ss time{floor<seconds>(*moment - day)};
  metadata.exifDate = fmt::format(
      "{:04}:{:02}:{:02} {:02}:{:02}:{:02}", int{date.year()}, unsigned{date.month()},
      unsigned{date.day()}, time.hours().count(), time.minutes().count(), time.seconds().count());
  metadata.exifOffset = "+00:00";
}

void setLocation(std::string_view text, MediaMetadata& metadata) {
  if (metadata.lat) return;
  if (const auto point = parseIso6709(text)) {
    metadata.setPosition(point->latitude, point->longitude);
  }
}

void setContentID(std::string_view text, MediaMetadata& metadata) {
  if (!text.empty()) metadata.contentID = replacingInvalidUtf8(text);
}

class Movie {
 public:
  Movie(FileBytes& file, MediaMetadata& metadata) : file_(file), metadata_(metadata) {}

  void read(const IsoBox& moov) {
    IsoBoxes boxes{file_, moov.begin, moov.end};
    while (const auto box = boxes.next()) {
      if (box->type == "mvhd") headerDate_ = headerDate(*box);
      if (box->type == "trak") readTrack(*box);
      if (box->type == "meta") readKeyed(*box);
      if (box->type == "udta") readUserData(*box);
    }
    if (!metadata_.exifDate) setHeaderDate(headerDate_, metadata_);
  }

 private:
  std::uint64_t headerDate(const IsoBox& header) const {
    const auto version = file_.at(header.begin, 1);
    if (!version) return 0;
    const auto date = file_.at(header.begin + 4, version->front() == 0 ? 4 : 8);
    return date ? bigEndian(*date) : 0;
  }

  /// Reads the size of a track. The first track with pixels is the film.
  void readTrack(const IsoBox& track) {
    if (metadata_.px) return;
    const auto header = IsoBoxes::find(file_, track.begin, track.end, "tkhd");
    // The header ends with width and height, as numbers with 16 bits of fraction.
    constexpr std::uint64_t sizeBytes = 8;
    if (!header || header->length() < sizeBytes) return;
    const auto size = file_.at(header->end - sizeBytes, sizeBytes);
    if (!size) return;
    metadata_.setPixels(bigEndian(size->substr(0, 2)), bigEndian(size->substr(4, 2)));
  }

  void readUserData(const IsoBox& data) {
    IsoBoxes boxes{file_, data.begin, data.end};
    while (const auto box = boxes.next()) {
      if (box->type == "meta") readKeyed(*box);
      if (box->type == "loci") readPlace(*box);
      if (box->type != "\xA9xyz") continue;
      // Length and language come before the text.
      constexpr std::size_t headBytes = 4;
      if (box->length() <= headBytes || box->length() > maxValueBytes) continue;
      const auto text = contentOf(file_, *box);
      if (text) setLocation(text->substr(headBytes), metadata_);
    }
  }

  /// Reads a place (3GPP TS 26.244, 8.10): its name, its role, then longitude and latitude as
  /// signed numbers with 16 bits of fraction.
  void readPlace(const IsoBox& box) {
    // Version, flags and language come before the name.
    constexpr std::size_t headBytes = 6;
    if (metadata_.lat || box.length() <= headBytes || box.length() > maxValueBytes) return;
    const std::string_view text = contentOf(file_, box).value_or("      ").substr(headBytes);
    ByteCursor cursor{text};
    const std::size_t unit = text.starts_with("\xFE\xFF") ? 2 : 1;
    while (cursor.number(unit) != 0) {
    }
    cursor.take(1);
    const auto degrees = [&] {
      const auto bits = static_cast<std::uint32_t>(cursor.number(4));
      return static_cast<double>(static_cast<std::int32_t>(bits)) / 0x10000;
    };
    const double longitude = degrees();
    const double latitude = degrees();
    if (!cursor.hasFailed()) metadata_.setPosition(latitude, longitude);
  }

  /// Returns the offset of the boxes in a "meta" box. In an MP4 file, version and flags come before
  /// them.
  std::uint64_t beginOf(const IsoBox& meta) const {
    const auto head = file_.at(meta.begin, 4);
    return head && bigEndian(*head) == 0 ? meta.begin + 4 : meta.begin;
  }

  std::vector<std::string_view> keysOf(const IsoBox& meta) const {
    std::vector<std::string_view> keys;
    const auto box = IsoBoxes::find(file_, beginOf(meta), meta.end, "keys");
    if (!box || box->length() <= 8) return keys;
    IsoBoxes entries{file_, box->begin + 8, box->end};
    while (const auto entry = entries.next()) {
      if (keys.size() == maxKeys) break;
      const bool isShort = entry->length() <= maxValueBytes;
      keys.push_back(isShort ? contentOf(file_, *entry).value_or("") : "");
    }
    return keys;
  }

  /// Reads the metadata by key. The values in "ilst" are boxes whose type is the number of their
  /// key, counted from 1.
  void readKeyed(const IsoBox& meta) {
    const auto keys = keysOf(meta);
    const auto list = IsoBoxes::find(file_, beginOf(meta), meta.end, "ilst");
    if (keys.empty() || !list) return;
    IsoBoxes values{file_, list->begin, list->end};
    while (const auto value = values.next()) {
      const std::uint64_t number = bigEndian(value->type);
      if (number == 0 || number > keys.size()) continue;
      if (keys[number - 1] == creationDateKey) setIsoDate(textOf(*value), metadata_);
      if (keys[number - 1] == contentKey) setContentID(textOf(*value), metadata_);
      if (keys[number - 1] == locationKey) setLocation(textOf(*value), metadata_);
    }
  }

  std::string_view textOf(const IsoBox& value) const {
    // Type and locale come before the text.
    constexpr std::size_t headBytes = 8;
    const auto data = IsoBoxes::find(file_, value.begin, value.end, "data");
    if (!data || data->length() < headBytes || data->length() > maxValueBytes) return {};
    return contentOf(file_, *data).value_or("        ").substr(headBytes);
  }

  FileBytes& file_;
  MediaMetadata& metadata_;
  std::uint64_t headerDate_ = 0;
};

}  // namespace

MediaMetadata readMovie(FileBytes& file) {
  MediaMetadata metadata;
  if (const auto moov = IsoBoxes::find(file, 0, file.size(), "moov")) {
    Movie{file, metadata}.read(*moov);
  }
  return metadata;
}

}  // namespace tavrix
