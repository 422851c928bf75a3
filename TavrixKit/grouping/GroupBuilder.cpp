#include "grouping/GroupBuilder.h"

namespace tavrix {

void GroupBuilder::add(const DatedShot& shot) {
  if (!group_.dateStart) group_.dateStart = shot.date;
  group_.dateEnd = shot.date;
  group_.bundles.push_back(*shot.bundle);
  if (shot.position) locate(*shot.position, shot.vector);
}

void GroupBuilder::addUndated(const AssetBundle& bundle) {
  group_.bundles.push_back(bundle);
  if (const auto point = bundle.position()) locate(*point, PlaceClustering::unitVector(*point));
}

MediaGroup GroupBuilder::finish() && {
  group_.bundles.shrink_to_fit();
  if (firstPoint_) group_.place = sum_.center(*firstPoint_);
  return std::move(group_);
}

void GroupBuilder::locate(const GeoPoint& point, const PlaceClustering::UnitVector& vector) {
  if (!firstPoint_) firstPoint_ = point;
  sum_.addVector(vector);
}

}  // namespace tavrix
