#pragma once

#include <memory>
#include <string>

#include "media/PlaceLookup.h"
#include "places/PlaceCells.h"
#include "places/PlaceDirectory.h"

namespace tavrix {

/// The cells of one library, with the names that a directory has for them.
class NamedCells : public PlaceLookup {
 public:
  /// With `mergeDistricts` a part of a city has the name of the city.
  NamedCells(std::shared_ptr<const PlaceCells> cells,
             std::shared_ptr<const PlaceDirectory> directory, bool mergeDistricts)
      : cells_(std::move(cells)),
        directory_(std::move(directory)),
        mergeDistricts_(mergeDistricts) {}

  const PlaceCells& cells() const { return *cells_; }

  std::string placeKey(const GeoPoint& point) const override { return cells_->keyOf(point); }
  std::optional<PlaceNames> names(const std::string& placeKey,
                                  const std::string& localeID) const override {
    const auto place = directory_->find(placeKey, localeID);
    return place ? std::optional{place->names(mergeDistricts_)} : std::nullopt;
  }
  std::optional<GeoPoint> center(const std::string& placeKey) const override {
    return PlaceCells::centerOf(placeKey);
  }

 private:
  std::shared_ptr<const PlaceCells> cells_;
  std::shared_ptr<const PlaceDirectory> directory_;
  bool mergeDistricts_;
};

}  // namespace tavrix
