#pragma once

#include <optional>
#include <string>

#include "grouping/DatedShots.h"
#include "grouping/MediaGroup.h"

namespace tavrix {

/// Builds a group from shots.
class GroupBuilder {
 public:
  explicit GroupBuilder(std::string id, std::size_t shotCount = 0) {
    group_.id = std::move(id);
    group_.bundles.reserve(shotCount);
  }

  /// Adds a shot, which must not be earlier than any shot added before.
  void add(const DatedShot& shot);
  void addUndated(const AssetBundle& bundle);

  void setCalendarUnit(DateGranularity unit) { group_.calendarUnit = unit; }

  /// Returns the group with its dates and the spherical centre of its shots' positions.
  MediaGroup finish() &&;

 private:
  void locate(const GeoPoint& point, const PlaceClustering::UnitVector& vector);

  MediaGroup group_;
  PlaceClustering::UnitVectorSum sum_;
  std::optional<GeoPoint> firstPoint_;
};

}  // namespace tavrix
