#include "media/ShotClock.h"

#include <algorithm>

namespace tavrix {
namespace {

/// Returns the time on the camera's clock, as if it were UTC. Films without an offset are dated in
/// UTC, which cannot be distinguished from a clock in that zone.
std::optional<Instant> shownTime(const MediaAsset& file) {
  const auto shown = file.cameraDate();
  const bool isUTC = file.kind() == MediaKind::video && shown == file.captureDate();
  return isUTC ? std::nullopt : shown;
}

}  // namespace

void extend(std::optional<DaySpan>& span, const DaySpan& by) {
  span = span ? DaySpan{std::min(span->first, by.first), std::max(span->last, by.last)} : by;
}

std::optional<LocalTime> ShotClock::timeOf(const MediaAsset& file) const {
  const auto date = file.captureDate();
  if (!date) return std::nullopt;
  if (!byCamera) return zone.toLocal(*date);
  if (const auto shown = shownTime(file)) return LocalTime{shown->time_since_epoch()};
  const auto location = places ? file.location() : std::nullopt;
  return (location ? places->zoneAt(*location) : std::nullopt).value_or(zone).toLocal(*date);
}

std::optional<CivilDate> ShotClock::dayOf(const MediaAsset& file) const {
  const auto time = timeOf(file);
  if (!time) return std::nullopt;
  return CivilDate{std::chrono::floor<std::chrono::days>(*time)};
}

}  // namespace tavrix
