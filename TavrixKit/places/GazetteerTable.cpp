#include "places/GazetteerTable.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <numbers>

namespace tavrix {
namespace {

constexpr std::string_view magic = "TAVRXGEO";
constexpr std::uint32_t currentVersion = 2;
constexpr std::size_t headerBytes = 36;
constexpr std::size_t regionBytes = 8;
constexpr std::size_t recordBytes = 26;
constexpr double bandsPerDegree = 4;
constexpr std::size_t bandCount = 720;
constexpr std::size_t bandTableBytes = (bandCount + 1) * sizeof(std::uint32_t);
constexpr double unitsPerDegree = 100'000;
// Above what any table holds, and low enough for every sum of sizes.
constexpr std::uint32_t largestCount = 1U << 28U;

constexpr double kmPerDegree = std::numbers::pi * earthDiameterKm / 360;

template <typename Number>
Number littleEndian(const std::byte* at) {
  std::make_unsigned_t<Number> value = 0;
  for (std::size_t i = sizeof value; i-- > 0;) {
    value = static_cast<decltype(value)>((std::uint64_t{value} << 8U) |
                                         std::to_integer<std::uint64_t>(at[i]));
  }
  return static_cast<Number>(value);
}

std::size_t bandOf(double latitude) {
  const double band = std::floor((latitude + 90) * bandsPerDegree);
  return static_cast<std::size_t>(std::clamp(band, 0.0, static_cast<double>(bandCount - 1)));
}

/// Degrees of longitude within which a circle lies (the meridians that touch it: sin Δλ = sin δ /
/// cos φ); 180 for one that holds a pole.
double longitudeReach(double latitude, double degrees) {
  if (std::abs(latitude) + degrees >= 90) return 180;
  const double radians = std::numbers::pi / 180;
  const double sine = std::sin(degrees * radians) / std::cos(latitude * radians);
  return std::asin(std::min(1.0, sine)) / radians;
}

}  // namespace

GazetteerTable::GazetteerTable(std::span<const std::byte> bytes) : bytes_(bytes) {
  using Kind = GazetteerError::Kind;
  if (bytes.size() < magic.size() || std::memcmp(bytes.data(), magic.data(), magic.size()) != 0) {
    throw GazetteerError{Kind::notGazetteer, 0};
  }
  if (bytes.size() < headerBytes) throw GazetteerError{Kind::wrongSize, bytes.size()};
  std::array<std::uint32_t, 7> numbers{};
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    numbers.at(i) = littleEndian<std::uint32_t>(bytes.data() + magic.size() + 4 * i);
  }
  if (numbers[0] != currentVersion) throw GazetteerError{Kind::otherVersion, 8};
  for (std::size_t i = 1; i <= 5; ++i) {
    if (numbers.at(i) > largestCount) throw GazetteerError{Kind::wrongSize, 8 + 4 * i};
  }
  placeCount_ = numbers[1];
  largeCount_ = numbers[2];
  countryCount_ = numbers[3];
  regionCount_ = numbers[4];
  dataDate_ = numbers[6];
  bandsAt_ = headerBytes + (2 * countryCount_ + 3) / 4 * 4;
  regionsAt_ = bandsAt_ + 2 * bandTableBytes;
  recordsAt_ = regionsAt_ + regionCount_ * regionBytes;
  namesAt_ = recordsAt_ + placeCount_ * recordBytes;
  if (bytes.size() != namesAt_ + numbers[5]) throw GazetteerError{Kind::wrongSize, bytes.size()};
  checkBands();
}

void GazetteerTable::checkBands() const {
  std::size_t previous = 0;
  for (const Part part : {Part::large, Part::small}) {
    const std::size_t last = part == Part::large ? largeCount_ : placeCount_;
    for (std::size_t band = 0; band <= bandCount; ++band) {
      const std::size_t start = bandStart(part, band);
      const bool isEnd = band == bandCount;
      if (start < previous || start > last || (isEnd && start != last)) {
        throw GazetteerError{
            GazetteerError::Kind::wrongOrder,
            bandsAt_ + (part == Part::large ? 0 : bandTableBytes) + band * sizeof(std::uint32_t)};
      }
      previous = start;
    }
  }
}

std::uint32_t GazetteerTable::bandStart(Part part, std::size_t band) const {
  return littleEndian<std::uint32_t>(bytes_.data() + bandsAt_ +
                                     (part == Part::large ? 0 : bandTableBytes) +
                                     band * sizeof(std::uint32_t));
}

const std::byte* GazetteerTable::record(std::size_t index) const {
  return bytes_.data() + recordsAt_ + index * recordBytes;
}

std::string_view GazetteerTable::textAt(std::uint32_t offset) const {
  const auto names = bytes_.subspan(namesAt_);
  if (offset >= names.size()) return {};
  const auto length = std::to_integer<std::size_t>(names[offset]);
  if (length > names.size() - offset - 1) return {};
  return {reinterpret_cast<const char*>(names.data()) + offset + 1, length};
}

double GazetteerTable::longitudeAt(std::size_t index) const {
  return littleEndian<std::int32_t>(record(index) + 4) / unitsPerDegree;
}

GeoPoint GazetteerTable::pointAt(std::size_t index) const {
  return {littleEndian<std::int32_t>(record(index)) / unitsPerDegree, longitudeAt(index)};
}

std::uint32_t GazetteerTable::populationAt(std::size_t index) const {
  return littleEndian<std::uint32_t>(record(index) + 8);
}

GazetteerPlace GazetteerTable::at(std::size_t index) const {
  const std::byte* const at = record(index);
  GazetteerPlace place;
  place.point = pointAt(index);
  place.population = populationAt(index);
  place.name = textAt(littleEndian<std::uint32_t>(at + 12));
  place.russianName = textAt(littleEndian<std::uint32_t>(at + 16));
  place.region = littleEndian<std::uint16_t>(at + 20);
  place.district = littleEndian<std::uint16_t>(at + 22);
  const auto country = std::to_integer<std::size_t>(at[24]);
  if (country < countryCount_) {
    place.country = {reinterpret_cast<const char*>(bytes_.data()) + headerBytes + 2 * country, 2};
  }
  place.isCapital = (std::to_integer<unsigned>(at[25]) & 1U) != 0;
  return place;
}

GazetteerRegion GazetteerTable::regionAt(std::uint16_t number) const {
  if (number == 0 || number > regionCount_) return {};
  const std::byte* const at = bytes_.data() + regionsAt_ + (number - 1) * regionBytes;
  return {textAt(littleEndian<std::uint32_t>(at)), textAt(littleEndian<std::uint32_t>(at + 4))};
}

std::size_t GazetteerTable::firstFrom(Range range, double longitude) const {
  while (range.first < range.last) {
    const std::size_t middle = range.first + (range.last - range.first) / 2;
    if (longitudeAt(middle) < longitude) {
      range.first = middle + 1;
    } else {
      range.last = middle;
    }
  }
  return range.first;
}

void GazetteerTable::visitLongitudes(Range range, double from, double to,
                                     const Visitor& visit) const {
  for (std::size_t i = firstFrom(range, from); i < range.last && longitudeAt(i) <= to; ++i) {
    visit(i);
  }
}

void GazetteerTable::visitAround(const GeoPoint& point, double radiusKm, Part part,
                                 const Visitor& visit) const {
  if (!std::isfinite(point.latitude) || !std::isfinite(point.longitude)) return;
  const double degrees = radiusKm / kmPerDegree;
  const double reach = longitudeReach(point.latitude, degrees);
  const double longitude = std::remainder(point.longitude, 360);
  const double west = longitude - reach;
  const double east = longitude + reach;
  const std::size_t lastBand = bandOf(point.latitude + degrees);
  for (std::size_t band = bandOf(point.latitude - degrees); band <= lastBand; ++band) {
    const Range range{bandStart(part, band), bandStart(part, band + 1)};
    if (range.first == range.last) continue;
    if (reach >= 180) {
      visitLongitudes(range, -180, 180, visit);
      continue;
    }
    visitLongitudes(range, std::max(west, -180.0), std::min(east, 180.0), visit);
    // What reaches over the 180th meridian goes on at the other side.
    if (west < -180) visitLongitudes(range, west + 360, 180, visit);
    if (east > 180) visitLongitudes(range, -180, east - 360, visit);
  }
}

}  // namespace tavrix
