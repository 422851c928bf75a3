#pragma once

#include "foundation/Time.h"

namespace tavrix {

/// Allows at most one save every `interval` seconds; the first save is due at once. The caller sets
/// `lastSavedAt` when it saves.
struct Checkpoint {
  double interval = 20.0;  ///< seconds
  Instant lastSavedAt = earliestInstant;

  /// Returns true if a save is due. A clock that was set back does not delay saving.
  bool isDue(Instant now) const {
    const std::chrono::duration<double> elapsed = now - lastSavedAt;
    return elapsed.count() >= interval || elapsed.count() < 0;
  }

  friend bool operator==(const Checkpoint&, const Checkpoint&) = default;
};

}  // namespace tavrix
