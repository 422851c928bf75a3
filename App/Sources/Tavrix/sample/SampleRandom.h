#pragma once

#include <cstdint>
#include <random>

namespace tavrix {

/// Pseudo-random numbers; the same seed and stream give the same numbers on every machine.
class SampleRandom {
 public:
  SampleRandom(std::uint64_t seed, std::uint64_t stream) : engine_(seed * 1'000'003 + stream) {}

  /// Returns a number from `from`, inclusive, to `to`, exclusive.
  double between(double from, double to) { return from + (to - from) * unit(); }
  /// Returns a whole number from `from` to `to`, both inclusive.
  int wholeBetween(int from, int to) { return static_cast<int>(between(from, to + 1)); }

 private:
  /// Returns the upper 53 bits as a number from 0 to less than 1. The distributions of <random>
  /// differ between standard libraries.
  double unit() { return static_cast<double>(engine_() >> 11U) * 0x1.0p-53; }

  std::mt19937_64 engine_;
};

}  // namespace tavrix
