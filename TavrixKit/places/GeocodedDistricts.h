#pragma once

#include <absl/container/flat_hash_map.h>

#include <memory>
#include <mutex>
#include <utility>

#include "foundation/StringMap.h"
#include "places/PlaceDirectory.h"

namespace tavrix {

/// The quarters of large cities that a geocoder knows. A place cell is larger than a quarter, so
/// they are looked up for spots of a five-hundredth of a degree (220 m), each once. Safe to use
/// from several threads.
class GeocodedDistricts {
 public:
  explicit GeocodedDistricts(std::shared_ptr<const PlaceDirectory> directory)
      : directory_(std::move(directory)) {}

  /// Returns the quarter at a point in the language of a locale, or nullopt if it is not known.
  std::optional<GeocodedDistrict> districtAt(const GeoPoint& point,
                                             const std::string& localeID) const;

 private:
  using Spot = std::pair<int, int>;
  using Spots = absl::flat_hash_map<Spot, std::optional<GeocodedDistrict>>;

  std::shared_ptr<const PlaceDirectory> directory_;
  mutable std::mutex mutex_;
  mutable StringMap<Spots> languages_;
};

}  // namespace tavrix
