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

namespace tavrix {

/// Why bytes are no table of places, and where.
class GazetteerError : public std::exception {
 public:
  enum class Kind {
    notGazetteer,  ///< it does not begin like one
    otherVersion,  ///< made for another version of the program
    wrongSize,     ///< longer or shorter than its parts together
    wrongOrder,    ///< the bands are not in order
  };

  GazetteerError(Kind kind, std::size_t offset) : kind_(kind), offset_(offset) {}
  Kind kind() const { return kind_; }
  /// The byte at which the fault was seen, from 0.
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
  std::string_view name;         ///< as in English
  std::string_view russianName;  ///< empty when there is none
  std::string_view country;      ///< ISO 3166-1 alpha-2
  std::uint16_t region = 0;      ///< number of the first-level region; 0 when unknown
  std::uint16_t district = 0;    ///< number of the second-level region; 0 when unknown
  bool isCapital = false;
};

/// A first-level region of the table: a state, a province, an oblast. The texts point into the
/// table; one is empty where there is no name, or only one that a well-known city of the country
/// has, too.
struct GazetteerRegion {
  std::string_view name;  ///< as in English
  std::string_view russianName;
};

/// The table of places, read where it lies: opening looks at the header and the bands alone. The
/// bytes are not trusted; whatever they hold, nothing outside them is read. Form:
/// docs/gazetteer.md. The bytes must outlive the table.
class GazetteerTable {
 public:
  /// The places stand in two parts, each in bands of a quarter of a degree of latitude, inside a
  /// band by longitude: a wide search needs to look at the large ones alone.
  enum class Part { large, small };

  /// Throws GazetteerError.
  explicit GazetteerTable(std::span<const std::byte> bytes);

  std::size_t size() const { return placeCount_; }
  /// The day of the data, as the number yyyymmdd.
  std::uint32_t dataDate() const { return dataDate_; }
  /// The place at an index below size(). A part of a city has no names of its own.
  GazetteerPlace at(std::size_t index) const;
  /// The place that a point there is named after: itself, or the city that it is a part of; nothing
  /// when that is damaged.
  std::optional<std::size_t> cityAt(std::size_t index) const;
  /// Whether the area around a place is not that of its country: a border drawn or disputed.
  bool isAstray(std::size_t index) const;
  std::uint8_t countryNumberAt(std::size_t index) const;
  std::uint16_t regionNumberAt(std::size_t index) const;
  /// The code of a country by its number; empty for a number too large.
  std::string_view country(std::uint8_t number) const;
  /// The areas of the countries, by the same numbers.
  const Borders& borders() const { return borders_; }
  /// The region of a number that places have; one without names for 0 and for a number too large.
  GazetteerRegion regionAt(std::uint16_t number) const;
  GeoPoint pointAt(std::size_t index) const;
  std::uint32_t populationAt(std::size_t index) const;

  /// Visits every place of a part within `radiusKm` of a point, and some a little farther off.
  using Visitor = std::function<void(std::size_t index)>;
  void visitAround(const GeoPoint& point, double radiusKm, Part part, const Visitor& visit) const;

 private:
  struct Range {
    std::size_t first;
    std::size_t last;
  };

  void checkBands(std::size_t which, std::size_t first, std::size_t last) const;
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
  std::uint32_t dataDate_ = 0;
  std::size_t bandsAt_ = 0;
  std::size_t regionsAt_ = 0;
  std::size_t recordsAt_ = 0;
  std::size_t namesAt_ = 0;
  Borders borders_;
};

}  // namespace tavrix
