#include "foundation/TimeZone.h"

#include <absl/time/civil_time.h>
#include <absl/time/time.h>

#include <algorithm>
#include <vector>

namespace tavrix {

using namespace std::chrono;

/// Offsets from UTC, each valid from its `begin`. Before `coveredBegin` and from `coveredEnd` on,
/// the offset comes from the library.
struct TimeZone::Table {
  struct Period {
    seconds begin;
    seconds offset;
  };

  std::string id;
  absl::TimeZone zone;
  std::vector<Period> periods;

  seconds offsetAt(seconds utc) const;
};

namespace {

constexpr seconds coveredBegin = sys_days{year{1800} / 1 / 1}.time_since_epoch();
constexpr seconds coveredEnd = sys_days{year{2200} / 1 / 1}.time_since_epoch();

seconds libraryOffset(const absl::TimeZone& zone, seconds utc) {
  return seconds{zone.At(absl::FromUnixSeconds(utc.count())).offset};
}

/// Returns true if the name may be passed to the library. The library would read an absolute path
/// as a file and "localtime" as the machine's zone.
bool isPlausibleID(std::string_view id) {
  const auto allowed = [](char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '+' || c == '-' || c == '/';
  };
  return !id.empty() && id.size() <= 64 && id.front() != '/' && id != "localtime" &&
         std::all_of(id.begin(), id.end(), allowed);
}

absl::CivilSecond civilSecond(LocalTime local) {
  const auto day = floor<days>(local);
  const CivilDate date{day};
  const auto second = floor<seconds>(local - day).count();
  return absl::CivilSecond(int{date.year()}, static_cast<int>(unsigned{date.month()}),
                           static_cast<int>(unsigned{date.day()}), 0, 0, second);
}

}  // namespace

seconds TimeZone::Table::offsetAt(seconds utc) const {
  if (utc < coveredBegin || utc >= coveredEnd) return libraryOffset(zone, utc);
  const auto next =
      std::upper_bound(periods.begin(), periods.end(), utc,
                       [](seconds moment, const Period& period) { return moment < period.begin; });
  return std::prev(next)->offset;
}

std::optional<TimeZone> TimeZone::load(std::string_view id) {
  if (!isPlausibleID(id)) return std::nullopt;
  auto table = std::make_shared<Table>();
  table->id = id;
  if (!absl::LoadTimeZone(table->id, &table->zone)) return std::nullopt;
  table->periods.push_back({coveredBegin, libraryOffset(table->zone, coveredBegin)});
  absl::Time moment = absl::FromUnixSeconds(coveredBegin.count());
  absl::TimeZone::CivilTransition transition;
  while (table->zone.NextTransition(moment, &transition)) {
    const absl::TimeZone::TimeInfo info = table->zone.At(transition.to);
    moment = info.trans;
    const seconds begin{absl::ToUnixSeconds(moment)};
    if (begin >= coveredEnd) break;
    table->periods.push_back({begin, libraryOffset(table->zone, begin)});
  }
  return TimeZone{std::move(table)};
}

TimeZone TimeZone::utc() {
  static const TimeZone zone = *load("UTC");
  return zone;
}

const std::string& TimeZone::id() const { return table_->id; }

LocalTime TimeZone::toLocal(Instant instant) const {
  const auto offset = table_->offsetAt(floor<seconds>(instant).time_since_epoch());
  return LocalTime{instant.time_since_epoch() + offset};
}

Instant TimeZone::toInstant(LocalTime local) const {
  // Both in a gap and in an overlap, `pre` uses the offset from before the change.
  const absl::Time moment = table_->zone.At(civilSecond(local)).pre;
  return Instant{seconds{absl::ToUnixSeconds(moment)} + (local - floor<seconds>(local))};
}

CivilDate TimeZone::dateAt(Instant instant) const {
  return CivilDate{floor<days>(toLocal(instant))};
}

}  // namespace tavrix
