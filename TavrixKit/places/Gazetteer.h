#pragma once

#include <memory>
#include <string>

#include "places/GazetteerTable.h"
#include "places/Geocoder.h"

namespace tavrix {

/// Names points from the table of places, at once and without asking anybody. Names of cities and
/// regions are Russian for a Russian locale where the table has them, English otherwise; country
/// names are in the language of the locale. A region is told only where no city is.
class Gazetteer : public Geocoder {
 public:
  /// Opens a table; the file stays mapped as long as the gazetteer lives. Throws FileError,
  /// GazetteerError.
  static std::unique_ptr<Gazetteer> open(const std::string& path);

  /// Over bytes that `owner` keeps. Throws GazetteerError.
  Gazetteer(std::span<const std::byte> bytes, std::shared_ptr<const void> owner)
      : owner_(std::move(owner)), table_(bytes) {}

  const GazetteerTable& table() const { return table_; }

  std::string source() const override;
  std::optional<GeocodedPlace> resolve(const GeoPoint& point,
                                       const std::string& localeID) const override;
  Borders borders() const override { return table_.borders(); }

 private:
  std::shared_ptr<const void> owner_;
  GazetteerTable table_;
};

}  // namespace tavrix
