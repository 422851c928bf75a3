#include "media/SnapshotItem.h"

#include <algorithm>

#include "media/FileNameDate.h"
#include "media/ParsedName.h"

namespace tavrix {
namespace {

using namespace std::chrono;

constexpr std::int64_t longestOptimizedSide = 2600;
constexpr std::uint64_t optimizedSizeLimit = 1400001;  // bytes, exclusive

std::optional<LocalTime> parseExifDate(std::string_view text) {
  if (text.size() != 19 || text[4] != ':' || text[7] != ':' || text[10] != ' ' || text[13] != ':' ||
      text[16] != ':') {
    return std::nullopt;
  }
  const auto number = [&](std::size_t begin, std::size_t length) {
    return parseDigits(text.substr(begin, length)).value_or(-1);
  };
  const int y = number(0, 4);
  const int mo = number(5, 2);
  const int d = number(8, 2);
  const int h = number(11, 2);
  const int mi = number(14, 2);
  const int s = number(17, 2);
  if (y < 1 || mo < 1 || d < 1 || h < 0 || h > 23 || mi < 0 || mi > 59 || s < 0 || s > 59)
    return std::nullopt;
  const CivilDate date{year{y}, month{static_cast<unsigned>(mo)}, day{static_cast<unsigned>(d)}};
  if (!date.ok()) return std::nullopt;
  return local_days{date} + hours{h} + minutes{mi} + seconds{s};
}

std::optional<seconds> parseExifOffset(std::string_view text) {
  if (text.size() != 6 || (text[0] != '+' && text[0] != '-') || text[3] != ':') return std::nullopt;
  const auto h = parseDigits(text.substr(1, 2));
  const auto m = parseDigits(text.substr(4, 2));
  if (!h || !m) return std::nullopt;
  const seconds distance = hours{*h} + minutes{*m};
  return text[0] == '-' ? -distance : distance;
}

struct Dates {
  std::optional<Instant> capture;
  std::optional<Instant> camera;
  std::optional<Instant> file;
};

Dates datesOf(const SnapshotItem& item, const TimeZone& zone, DatesFromNames names) {
  if (item.exifDate) {
    if (const auto moment = instantOfExif(*item.exifDate, item.exifOffset, zone)) {
      return {moment, Instant{parseExifDate(*item.exifDate)->time_since_epoch()}, std::nullopt};
    }
  }
  const auto file = item.itemDate ? instantFromUnixSeconds(*item.itemDate) : std::nullopt;
  const bool asksName = file && names == DatesFromNames::used;
  const auto named = asksName ? dateOfFileName(item.name) : std::nullopt;
  if (named) return {named->instant(zone), std::nullopt, file};
  return {file, std::nullopt, std::nullopt};
}

/// Returns true if the item is a reduced copy of an original that is in the cloud.
bool isOptimizedCopy(const SnapshotItem& item, MediaKind kind) {
  if (!item.cam.value_or(false) || kind != MediaKind::photo) return false;
  const std::int64_t width = item.px.value_or(0);
  const std::int64_t height = item.py.value_or(0);
  if (width <= 0 || height <= 0 || std::max(width, height) > longestOptimizedSide) return false;
  if (item.size == 0 || item.size >= optimizedSizeLimit) return false;
  return !BundleBuilder::isEditedName(item.name);
}

}  // namespace

std::optional<Instant> instantOfExif(std::string_view exifDate,
                                     std::optional<std::string_view> exifOffset,
                                     const TimeZone& zone) {
  const auto local = parseExifDate(exifDate);
  if (!local) return std::nullopt;
  const auto offset = exifOffset ? parseExifOffset(*exifOffset) : std::nullopt;
  const Instant moment =
      offset ? Instant{local->time_since_epoch() - *offset} : zone.toInstant(*local);
  if (moment < earliestInstant || moment > latestInstant) return std::nullopt;
  return moment;
}

bool isExifOffset(std::string_view text) { return parseExifOffset(text).has_value(); }

std::string SnapshotItem::assetID() const {
  std::string id;
  appendAssetID(id);
  return id;
}

void SnapshotItem::appendAssetID(std::string& text) const {
  if (dir && !dir->empty()) text.append(*dir).append("/");
  text.append(name);
}

MediaAsset SnapshotItem::mediaAsset(std::string_view id, const TimeZone& zone,
                                    DatesFromNames names) const {
  const auto namedKind = mediaKindOf(kind);
  const MediaKind assetKind = namedKind ? *namedKind : mediaKindOfFileName(name);
  std::optional<GeoPoint> location;
  if (lat && lon) location = GeoPoint{*lat, *lon};
  const bool hasDirectory = dir && !dir->empty();
  const Dates dates = datesOf(*this, zone, names);
  return MediaAsset{id,
                    name,
                    hasDirectory ? MediaAsset::Text{*dir} : std::nullopt,
                    assetKind,
                    size,
                    dates.capture,
                    location,
                    isOptimizedCopy(*this, assetKind),
                    std::nullopt,
                    std::nullopt,
                    dates.camera,
                    cam.value_or(false),
                    contentID ? MediaAsset::Text{*contentID} : std::nullopt,
                    dates.file};
}

}  // namespace tavrix
