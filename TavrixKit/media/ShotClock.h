#pragma once

#include <memory>
#include <optional>

#include "foundation/TimeZone.h"
#include "media/AssetBundle.h"
#include "media/PlaceZones.h"

namespace tavrix {

/// A first and a last calendar day, both inclusive.
struct DaySpan {
  CivilDate first;
  CivilDate last;

  friend bool operator==(const DaySpan&, const DaySpan&) = default;
};

/// Extends `span` so that it contains `by`.
void extend(std::optional<DaySpan>& span, const DaySpan& by);

/// The clock by which the calendar days of shots are determined.
struct ShotClock {
  TimeZone zone = TimeZone::utc();
  /// The clock is that of the camera. Files without such a clock have the time of their place:
  /// films that are dated in UTC, and files that have only the date of the file or its name.
  bool byCamera = false;
  /// Without zones of places, and for files without a position, that is the time of `zone`.
  std::shared_ptr<const PlaceZones> places{};

  /// Returns the time on the clock, or nullopt if the file has no date.
  std::optional<LocalTime> timeOf(const MediaAsset& file) const;
  /// Returns the day of a file, or nullopt if it has no date.
  std::optional<CivilDate> dayOf(const MediaAsset& file) const;
  /// Returns the day of the shot's primary picture, or nullopt if it has no date.
  std::optional<CivilDate> dayOf(const AssetBundle& shot) const {
    return dayOf(shot.primaryPicture());
  }

  friend bool operator==(const ShotClock&, const ShotClock&) = default;
};

}  // namespace tavrix
