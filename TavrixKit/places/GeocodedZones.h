#pragma once

#include <memory>
#include <mutex>
#include <utility>

#include "foundation/StringMap.h"
#include "media/PlaceZones.h"
#include "places/PlaceDirectory.h"

namespace tavrix {

/// The zones that a geocoder knows, each looked up once for every hundredth of a degree.
class GeocodedZones : public PlaceZones {
 public:
  explicit GeocodedZones(std::shared_ptr<const PlaceDirectory> directory)
      : directory_(std::move(directory)) {}

  std::optional<TimeZone> zoneAt(const GeoPoint& point) const override;

 private:
  using Cell = std::pair<int, int>;

  std::optional<TimeZone> zoneOf(const std::string& id) const;

  std::shared_ptr<const PlaceDirectory> directory_;
  mutable std::mutex mutex_;
  mutable absl::flat_hash_map<Cell, std::optional<TimeZone>> cells_;
  mutable StringMap<std::optional<TimeZone>> zones_;  ///< by identifier
};

}  // namespace tavrix
