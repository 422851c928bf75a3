#include "interface/run/Pace.h"

#include <algorithm>
#include <cmath>

namespace tavrix::window {
namespace {

/// The time in seconds after which a measurement weighs a third.
constexpr double shortMemory = 4;
constexpr double longMemory = 30;
constexpr std::chrono::duration<double> leastTime{10};
constexpr std::uint64_t leastShare = 100;
constexpr double leastSeconds = 0.5;

}  // namespace

void Pace::Mean::add(double addedUnits, double addedSeconds, double memory) {
  const double kept = std::exp(-addedSeconds / memory);
  units = units * kept + addedUnits;
  seconds = seconds * kept + addedSeconds;
}

void Pace::measure(Moment now, std::uint64_t done) {
  if (measuredAt_ && now > *measuredAt_) {
    const std::chrono::duration<double> elapsed = now - *measuredAt_;
    const auto units = static_cast<double>(done - std::min(done, done_));
    worked_ += elapsed;
    recent_.add(units, elapsed.count(), shortMemory);
    steady_.add(units, elapsed.count(), longMemory);
  }
  skip(now, done);
}

void Pace::skip(Moment now, std::uint64_t done) {
  measuredAt_ = now;
  done_ = done;
}

std::optional<double> Pace::speed() const {
  if (recent_.seconds < leastSeconds) return std::nullopt;
  return recent_.units / recent_.seconds;
}

std::optional<std::chrono::seconds> Pace::timeLeft(std::uint64_t total) const {
  if (worked_ < leastTime || done_ < total / leastShare || steady_.units < 1) return std::nullopt;
  const auto left = static_cast<double>(total - std::min(total, done_));
  return std::chrono::seconds{std::llround(left * steady_.seconds / steady_.units)};
}

}  // namespace tavrix::window
