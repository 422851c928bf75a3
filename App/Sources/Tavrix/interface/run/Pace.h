#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

namespace tavrix::window {

/// The pace of a piece of work, from which the time that is left follows. Units are bytes or files.
/// Time during which the work waits is not counted. Moments must never decrease.
class Pace {
 public:
  using Moment = std::chrono::steady_clock::time_point;

  /// Takes the units that are done at a moment.
  void measure(Moment now, std::uint64_t done);
  /// As measure(), for units that were found done, which took no work.
  void skip(Moment now, std::uint64_t done);
  /// The work waits until the next call of measure().
  void wait(Moment now, std::uint64_t done) { skip(now, done); }

  /// Returns the units a second of the last few seconds, or nullopt while it is unknown.
  std::optional<double> speed() const;
  /// Returns the time that is left. Returns nullopt for the first ten seconds and the first
  /// hundredth of the units, when it cannot be known well.
  std::optional<std::chrono::seconds> timeLeft(std::uint64_t total) const;

 private:
  /// A mean in which earlier measurements count less and less.
  struct Mean {
    double units = 0;
    double seconds = 0;
    void add(double addedUnits, double addedSeconds, double memory);
  };

  std::optional<Moment> measuredAt_;
  std::uint64_t done_ = 0;
  std::chrono::duration<double> worked_{0};
  Mean recent_;  ///< for the speed on screen
  Mean steady_;  ///< for the time that is left
};

}  // namespace tavrix::window
