#include "places/GazetteerTable.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <numbers>

#include "places/TableBytes.h"

namespace tavrix {
namespace {

using TableBytes::bandCount;
using TableBytes::bandOf;
using TableBytes::degreesAt;
using TableBytes::kmPerDegree;
using TableBytes::littleEndian;

constexpr std::string_view magic = "TAVRXGEO";
constexpr std::uint32_t currentVersion = 6;
constexpr std::size_t headerBytes = 52;
constexpr std::size_t regionBytes = 12;
constexpr std::size_t zoneBytes = 4;
constexpr std::size_t districtBytes = 8;
constexpr std::size_t recordBytes = 28;
constexpr std::size_t bandTableBytes = (bandCount + 1) * sizeof(std::uint32_t);
// More than any table holds, and small enough that no sum of sizes overflows.
constexpr std::uint32_t largestCount = 1U << 28U;

constexpr unsigned capitalFlag = 1;
constexpr unsigned partFlag = 2;
constexpr unsigned astrayFlag = 4;
constexpr unsigned transcribedFlag = 8;

/// Returns the greatest difference in longitude, in degrees, between the centre of a circle and its
/// points (given by the tangent meridians: sin Δλ = sin δ / cos φ); 180 if it contains a pole.
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
  std::array<std::uint32_t, 11> numbers{};
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    numbers.at(i) = littleEndian<std::uint32_t>(bytes.data() + magic.size() + 4 * i);
  }
  if (numbers[0] != currentVersion) throw GazetteerError{Kind::otherVersion, 8};
  for (std::size_t i = 1; i <= 9; ++i) {
    if (numbers.at(i) > largestCount) throw GazetteerError{Kind::wrongSize, 8 + 4 * i};
  }
  placeCount_ = numbers[1];
  largeCount_ = numbers[2];
  countryCount_ = numbers[3];
  regionCount_ = numbers[4];
  zoneCount_ = numbers[5];
  districtCount_ = numbers[6];
  dataDate_ = numbers[10];
  bandsAt_ = headerBytes + (2 * countryCount_ + 3) / 4 * 4;
  regionsAt_ = bandsAt_ + 3 * bandTableBytes;
  zonesAt_ = regionsAt_ + regionCount_ * regionBytes;
  districtsAt_ = zonesAt_ + zoneCount_ * zoneBytes;
  recordsAt_ = districtsAt_ + districtCount_ * districtBytes;
  const std::size_t sidesAt = recordsAt_ + placeCount_ * recordBytes;
  const std::size_t sideCount = numbers[7];
  const std::size_t rowsAt = sidesAt + sideCount * Borders::sideBytes;
  const std::size_t runsAt = rowsAt + RegionGrid::startsBytes;
  const std::size_t runCount = numbers[8];
  namesAt_ = runsAt + runCount * RegionGrid::runBytes;
  if (bytes.size() != namesAt_ + numbers[9]) throw GazetteerError{Kind::wrongSize, bytes.size()};
  checkStarts(bandsAt_, bandCount, 0, largeCount_);
  checkStarts(bandsAt_ + bandTableBytes, bandCount, largeCount_, placeCount_);
  checkStarts(bandsAt_ + 2 * bandTableBytes, bandCount, 0, sideCount);
  checkStarts(rowsAt, RegionGrid::rowCount, 0, runCount);
  borders_ = Borders{bytes.subspan(bandsAt_ + 2 * bandTableBytes, bandTableBytes),
                     bytes.subspan(sidesAt, sideCount * Borders::sideBytes)};
  regionGrid_ = RegionGrid{bytes.subspan(rowsAt, RegionGrid::startsBytes),
                           bytes.subspan(runsAt, runCount * RegionGrid::runBytes)};
}

/// Checks one of the tables of `count` bands or rows, whose indices must ascend from `first` to
/// `last`.
void GazetteerTable::checkStarts(std::size_t tableAt, std::size_t count, std::size_t first,
                                 std::size_t last) const {
  std::size_t previous = first;
  for (std::size_t band = 0; band <= count; ++band) {
    const std::size_t at = tableAt + band * sizeof(std::uint32_t);
    const std::size_t start = littleEndian<std::uint32_t>(bytes_.data() + at);
    if (start < previous || start > last || (band == count && start != last)) {
      throw GazetteerError{GazetteerError::Kind::wrongOrder, at};
    }
    previous = start;
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

double GazetteerTable::longitudeAt(std::size_t index) const { return degreesAt(record(index) + 4); }

GeoPoint GazetteerTable::pointAt(std::size_t index) const {
  return {degreesAt(record(index)), longitudeAt(index)};
}

std::uint32_t GazetteerTable::populationAt(std::size_t index) const {
  return littleEndian<std::uint32_t>(record(index) + 8);
}

unsigned GazetteerTable::flagsAt(std::size_t index) const {
  return std::to_integer<unsigned>(record(index)[25]);
}

std::optional<std::size_t> GazetteerTable::cityAt(std::size_t index) const {
  if (!isPart(index)) return index;
  const std::size_t city = littleEndian<std::uint32_t>(record(index) + 12);
  if (city >= placeCount_ || isPart(city)) return std::nullopt;
  return city;
}

bool GazetteerTable::isPart(std::size_t index) const { return (flagsAt(index) & partFlag) != 0; }

GazetteerDistrict GazetteerTable::districtAt(std::size_t index) const {
  if (!isPart(index)) return {};
  const auto number = littleEndian<std::uint32_t>(record(index) + 16);
  if (number == 0 || number > districtCount_) return {};
  const std::byte* const at = bytes_.data() + districtsAt_ + (number - 1) * districtBytes;
  const std::string_view name = textAt(littleEndian<std::uint32_t>(at));
  if (name.empty()) return {};
  return {number, name, textAt(littleEndian<std::uint32_t>(at + 4))};
}

bool GazetteerTable::isAstray(std::size_t index) const {
  return (flagsAt(index) & astrayFlag) != 0;
}

std::uint8_t GazetteerTable::countryNumberAt(std::size_t index) const {
  return std::to_integer<std::uint8_t>(record(index)[24]);
}

std::string_view GazetteerTable::country(std::uint8_t number) const {
  if (number >= countryCount_) return {};
  return {reinterpret_cast<const char*>(bytes_.data()) + headerBytes + 2 * number, 2};
}

std::uint16_t GazetteerTable::regionNumberAt(std::size_t index) const {
  return littleEndian<std::uint16_t>(record(index) + 20);
}

std::string_view GazetteerTable::zoneIDAt(std::size_t index) const {
  const std::size_t number = littleEndian<std::uint16_t>(record(index) + 26);
  if (number == 0 || number > zoneCount_) return {};
  return textAt(littleEndian<std::uint32_t>(bytes_.data() + zonesAt_ + (number - 1) * zoneBytes));
}

GazetteerPlace GazetteerTable::at(std::size_t index) const {
  const std::byte* const at = record(index);
  GazetteerPlace place;
  place.point = pointAt(index);
  place.population = populationAt(index);
  if (!isPart(index)) {
    place.name = textAt(littleEndian<std::uint32_t>(at + 12));
    place.russianName = textAt(littleEndian<std::uint32_t>(at + 16));
  }
  place.region = regionNumberAt(index);
  place.district = littleEndian<std::uint16_t>(at + 22);
  place.country = country(countryNumberAt(index));
  place.isCapital = (flagsAt(index) & capitalFlag) != 0;
  place.isTranscribed = (flagsAt(index) & transcribedFlag) != 0;
  return place;
}

GazetteerRegion GazetteerTable::regionAt(std::uint16_t number) const {
  if (number == 0 || number > regionCount_) return {};
  const std::byte* const at = bytes_.data() + regionsAt_ + (number - 1) * regionBytes;
  return {textAt(littleEndian<std::uint32_t>(at)), textAt(littleEndian<std::uint32_t>(at + 4)),
          std::to_integer<std::uint8_t>(at[8])};
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
    // A range that crosses the 180th meridian continues on the other side.
    if (west < -180) visitLongitudes(range, west + 360, 180, visit);
    if (east > 180) visitLongitudes(range, -180, east - 360, visit);
  }
}

}  // namespace tavrix
