#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "grouping/GroupingMode.h"
#include "media/AssetBundle.h"
#include "media/ShotClock.h"

namespace tavrix {

/// One destination folder, as computed by grouping. Copying it copies pointers to its shots.
struct MediaGroup {
  /// The number of files by kind. The motion part of a Live Photo is counted as a video.
  struct MediaCounts {
    std::uint64_t photos = 0;
    std::uint64_t videos = 0;
    std::uint64_t sidecars = 0;
    std::uint64_t others = 0;
    std::uint64_t totalBytes = 0;

    friend bool operator==(const MediaCounts&, const MediaCounts&) = default;
  };

  /// The identifier of the group: unique within one result, and the same whenever the same data is
  /// grouped. Manual names and merges refer to it.
  std::string id;
  std::optional<Instant> dateStart;  ///< earliest capture date of the shots
  std::optional<Instant> dateEnd;    ///< latest capture date of the shots
  std::optional<GeoPoint> place;     ///< spherical centre of the shots' positions
  /// The shots in capture order; ties and undated shots in catalogue order.
  std::vector<AssetBundle> bundles;
  /// The groups from which a merged group was made; empty for any other group.
  std::vector<MediaGroup> children;
  /// The part of the calendar for which the group stands: a day, a month, a year, or the month of
  /// shots outside trips. nullopt for any other group.
  std::optional<DateGranularity> calendarUnit{};
  /// The first and last day that the cameras showed; nullopt if days are those of a time zone.
  std::optional<DaySpan> cameraDays{};

  MediaCounts counts() const;

  friend bool operator==(const MediaGroup&, const MediaGroup&) = default;
};

/// Sets the camera days of a group that has a date, if `clock` is that of the cameras.
void setCameraDays(MediaGroup& group, const ShotClock& clock);

/// Returns the days of a group: those that the cameras showed if it has them, otherwise those of
/// its dates in `zone`. Returns nullopt if it has no date.
std::optional<DaySpan> daysOf(const MediaGroup& group, const TimeZone& zone);

}  // namespace tavrix
