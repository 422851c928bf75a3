#pragma once

#include <memory>
#include <string>
#include <utility>

#include "media/PlaceLookup.h"
#include "places/GeocodedDistricts.h"
#include "places/PlaceCells.h"
#include "places/PlaceDirectory.h"

namespace tavrix {

/// The cells of one library, with the names that a directory has for them.
class NamedCells : public PlaceLookup {
 public:
  /// With `mergeDistricts` a part of a city has the name of the city, and there are no quarters.
  /// There are none either if `districts` is null.
  NamedCells(std::shared_ptr<const PlaceCells> cells,
             std::shared_ptr<const PlaceDirectory> directory, bool mergeDistricts,
             std::shared_ptr<const GeocodedDistricts> districts = nullptr)
      : cells_(std::move(cells)),
        directory_(std::move(directory)),
        districts_(std::move(districts)),
        mergeDistricts_(mergeDistricts) {}

  const PlaceCells& cells() const { return *cells_; }

  std::string placeKey(const GeoPoint& point) const override { return cells_->keyOf(point); }
  std::optional<PlaceNames> names(const std::string& placeKey,
                                  const std::string& localeID) const override {
    const auto place = directory_->find(placeKey, localeID);
    return place ? std::optional{place->names(mergeDistricts_)} : std::nullopt;
  }
  std::optional<PlaceDistrict> district(const GeoPoint& point, const std::string& placeKey,
                                        const std::string& localeID) const override {
    if (mergeDistricts_ || districts_ == nullptr) return std::nullopt;
    auto district = districts_->districtAt(point, localeID);
    if (!district) return std::nullopt;
    const auto place = directory_->find(placeKey, localeID);
    if (!place) return std::nullopt;
    // A quarter of New York may belong to Brooklyn or to the whole city.
    const bool isOfCity = place->cityNumber == district->cityNumber ||
                          (place->cityNumber && place->mainCityNumber == district->cityNumber);
    if (!isOfCity) return std::nullopt;
    return PlaceDistrict{std::move(district->name), district->number};
  }
  std::optional<GeoPoint> center(const std::string& placeKey) const override {
    return PlaceCells::centerOf(placeKey);
  }

 private:
  std::shared_ptr<const PlaceCells> cells_;
  std::shared_ptr<const PlaceDirectory> directory_;
  std::shared_ptr<const GeocodedDistricts> districts_;
  bool mergeDistricts_;
};

}  // namespace tavrix
