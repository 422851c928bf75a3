#pragma once

#include <cstdint>
#include <random>

namespace tavrix {

/// Numbers that look random and are the same on every machine for the same seed and stream.
class SampleRandom {
 public:
  SampleRandom(std::uint64_t seed, std::uint64_t stream) : engine_(seed * 1'000'003 + stream) {}

  /// At least `from`, less than `to`.
  double between(double from, double to) { return from + (to - from) * unit(); }
  /// From `from` to `to`, both included.
  int wholeBetween(int from, int to) { return static_cast<int>(between(from, to + 1)); }

 private:
  /// The upper 53 bits as a number from 0 to below 1; the distributions of <random> differ between
  /// standard libraries.
  double unit() { return static_cast<double>(engine_() >> 11U) * 0x1.0p-53; }

  std::mt19937_64 engine_;
};

}  // namespace tavrix
