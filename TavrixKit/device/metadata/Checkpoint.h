#pragma once

#include "foundation/Time.h"

namespace tavrix {

/// Allows a save at most every `interval` seconds; the first one at once. Whoever saves sets
/// `lastSavedAt`.
struct Checkpoint {
  double interval = 20.0;  ///< seconds
  Instant lastSavedAt = earliestInstant;

  /// A clock that was set back does not hold up saving.
  bool isDue(Instant now) const {
    const std::chrono::duration<double> elapsed = now - lastSavedAt;
    return elapsed.count() >= interval || elapsed.count() < 0;
  }

  friend bool operator==(const Checkpoint&, const Checkpoint&) = default;
};

}  // namespace tavrix
