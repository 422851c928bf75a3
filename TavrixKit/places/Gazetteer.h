#pragma once

#include <memory>
#include <string>

#include "places/GazetteerTable.h"
#include "places/Geocoder.h"

namespace tavrix {

/// Names points from the table of places, immediately and without a network. For a Russian locale
/// the names are the Russian ones, for every other the English ones; country names are in the
/// language of the locale. A city without a name in the language is named by its region, otherwise
/// by its country, so that no English name is inside a Russian one; a quarter without one is none.
/// A point has a region only if it has no city: the first-level region, or the country where that
/// has no name.
class Gazetteer : public Geocoder {
 public:
  /// Opens a table. The file stays mapped as long as the gazetteer exists. Throws FileError and
  /// GazetteerError.
  static std::unique_ptr<Gazetteer> open(const std::string& path);

  /// Uses bytes that `owner` keeps alive. Throws GazetteerError.
  Gazetteer(std::span<const std::byte> bytes, std::shared_ptr<const void> owner)
      : owner_(std::move(owner)), table_(bytes) {}

  const GazetteerTable& table() const { return table_; }

  std::string source() const override;
  std::optional<GeocodedPlace> resolve(const GeoPoint& point,
                                       const std::string& localeID) const override;
  std::optional<GeocodedDistrict> districtAt(const GeoPoint& point,
                                             const std::string& localeID) const override;
  std::optional<std::string> zoneIDAt(const GeoPoint& point) const override;
  Borders borders() const override { return table_.borders(); }

 private:
  std::shared_ptr<const void> owner_;
  GazetteerTable table_;
};

}  // namespace tavrix
