#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <optional>
#include <span>
#include <string_view>

#include "foundation/GeoPoint.h"
#include "places/Borders.h"
#include "places/RegionGrid.h"

namespace tavrix {

/// Why parsing the gazetteer failed, and at which offset.
class GazetteerError : public std::exception {
 public:
  enum class Kind {
    notGazetteer,  ///< the bytes do not begin like a gazetteer
    otherVersion,  ///< made for another version of the program
    wrongSize,     ///< longer or shorter than the sum of its parts
    wrongOrder,    ///< the bands are not in order
  };

  GazetteerError(Kind kind, std::size_t offset) : kind_(kind), offset_(offset) {}
  Kind kind() const { return kind_; }
  /// Returns the byte offset at which the error was found, from 0.
  std::size_t offset() const { return offset_; }
  const char* what() const noexcept override { return "GazetteerError"; }

 private:
  Kind kind_;
  std::size_t offset_;
};

/// A place of the table. The texts point into the table.
struct GazetteerPlace {
  GeoPoint point;
  std::uint32_t population = 0;
  std::string_view name;         ///< English
  std::string_view russianName;  ///< empty if there is none
  std::string_view country;      ///< ISO 3166-1 alpha-2
  std::uint16_t region = 0;      ///< number of the first-level region; 0 if unknown
  std::uint16_t district = 0;    ///< number of the second-level region; 0 if unknown
  bool isCapital = false;
  bool isTranscribed = false;  ///< the Russian name is made by the rules of the place's language
};

/// A quarter of a large city. The texts point into the table.
struct GazetteerDistrict {
  std::uint32_t number = 0;      ///< equal for all parts of the city with this name; 0 for none
  std::string_view name;         ///< English
  std::string_view russianName;  ///< empty if there is none
};

/// A first-level region of the table: a state, a province, an oblast. The texts point into the
/// table. A text is empty if the region has no name, or only one that it shares with a well-known
/// city of the country.
struct GazetteerRegion {
  std::string_view name;  ///< English
  std::string_view russianName;
  std::uint8_t country = 0;  ///< number of the country
};

/// The table of places, read in place: the constructor reads only the header and the bands. The
/// bytes are not trusted; whatever they contain, nothing outside them is read. They must outlive
/// the table. docs/gazetteer.md describes the format.
class GazetteerTable {
 public:
  /// The two parts of the places, so that a wide search needs to visit only the large places. Each
  /// part is sorted by bands of a quarter of a degree of latitude and inside a band by longitude.
  enum class Part { large, small };

  /// Throws GazetteerError.
  explicit GazetteerTable(std::span<const std::byte> bytes);

  std::size_t size() const { return placeCount_; }
  /// Returns the day of the data, as the number yyyymmdd.
  std::uint32_t dataDate() const { return dataDate_; }
  /// Returns the place at an index below size(). A part of a city has no names of its own.
  GazetteerPlace at(std::size_t index) const;
  /// Returns the place after which a point near this place is named: the place itself, or the city
  /// of which it is a part. Returns nullopt if the reference to the city is damaged.
  std::optional<std::size_t> cityAt(std::size_t index) const;
  /// Returns true if a place is only a part of a city.
  bool isPart(std::size_t index) const;
  /// Returns the quarter that a part of a city stands for. The number is 0 if it has no name or is
  /// damaged, or if the place is not a part of a city.
  GazetteerDistrict districtAt(std::size_t index) const;
  /// Returns true if a place is in the area of a country that is not its own, because the border is
  /// disputed or drawn too roughly.
  bool isAstray(std::size_t index) const;
  std::uint8_t countryNumberAt(std::size_t index) const;
  std::uint16_t regionNumberAt(std::size_t index) const;
  /// Returns the identifier of a place's time zone, such as "Europe/Rome"; empty if unknown.
  std::string_view zoneIDAt(std::size_t index) const;
  /// Returns the code of a country from its number; empty if the number is too large.
  std::string_view country(std::uint8_t number) const;
  /// Returns the areas of the countries, which use the same numbers.
  const Borders& borders() const { return borders_; }
  /// Returns the areas of the regions, which use the same numbers as places.
  const RegionGrid& regionGrid() const { return regionGrid_; }
  /// Returns the region with a number as places have it. The names are empty if the number is 0 or
  /// too large.
  GazetteerRegion regionAt(std::uint16_t number) const;
  GeoPoint pointAt(std::size_t index) const;
  std::uint32_t populationAt(std::size_t index) const;

  /// Visits all places of a part within `radiusKm` of a point, and some that are a little farther.
  using Visitor = std::function<void(std::size_t index)>;
  void visitAround(const GeoPoint& point, double radiusKm, Part part, const Visitor& visit) const;

 private:
  struct Range {
    std::size_t first;
    std::size_t last;
  };

  void checkStarts(std::size_t tableAt, std::size_t count, std::size_t first,
                   std::size_t last) const;
  std::uint32_t bandStart(Part part, std::size_t band) const;
  std::string_view textAt(std::uint32_t offset) const;
  const std::byte* record(std::size_t index) const;
  unsigned flagsAt(std::size_t index) const;
  double longitudeAt(std::size_t index) const;
  std::size_t firstFrom(Range range, double longitude) const;
  void visitLongitudes(Range range, double from, double to, const Visitor& visit) const;

  std::span<const std::byte> bytes_;
  std::size_t placeCount_ = 0;
  std::size_t largeCount_ = 0;
  std::size_t countryCount_ = 0;
  std::size_t regionCount_ = 0;
  std::size_t zoneCount_ = 0;
  std::size_t districtCount_ = 0;
  std::uint32_t dataDate_ = 0;
  std::size_t bandsAt_ = 0;
  std::size_t regionsAt_ = 0;
  std::size_t zonesAt_ = 0;
  std::size_t districtsAt_ = 0;
  std::size_t recordsAt_ = 0;
  std::size_t namesAt_ = 0;
  Borders borders_;
  RegionGrid regionGrid_;
};

}  // namespace tavrix
