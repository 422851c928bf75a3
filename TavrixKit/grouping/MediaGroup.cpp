#include "grouping/MediaGroup.h"

namespace tavrix {

MediaGroup::MediaCounts MediaGroup::counts() const {
  MediaCounts counts;
  for (const AssetBundle& bundle : bundles) {
    for (const MediaAsset& asset : bundle.assets()) {
      switch (asset.kind()) {
        case MediaKind::photo:
          ++counts.photos;
          break;
        case MediaKind::video:
          ++counts.videos;
          break;
        case MediaKind::sidecar:
          ++counts.sidecars;
          break;
        case MediaKind::other:
          ++counts.others;
          break;
      }
      counts.totalBytes += asset.sizeBytes();
    }
  }
  return counts;
}

void setCameraDays(MediaGroup& group, const ShotClock& clock) {
  if (!clock.byCamera) return;
  for (const AssetBundle& shot : group.bundles) {
    if (const auto day = clock.dayOf(shot)) extend(group.cameraDays, {*day, *day});
  }
}

std::optional<DaySpan> daysOf(const MediaGroup& group, const TimeZone& zone) {
  if (group.cameraDays) return group.cameraDays;
  if (!group.dateStart) return std::nullopt;
  return DaySpan{zone.dateAt(*group.dateStart),
                 zone.dateAt(group.dateEnd.value_or(*group.dateStart))};
}

}  // namespace tavrix
