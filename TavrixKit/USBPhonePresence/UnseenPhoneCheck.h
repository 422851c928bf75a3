#pragma once

#include <chrono>
#include <optional>

#include "foundation/Log.h"

namespace tavrix {

/// Detects a phone that is on the bus although the system does not provide it. After 12 seconds in
/// this state, the user is informed. A check is a value; each step returns the next one. Moments
/// are those of a steady clock.
struct UnseenPhoneCheck {
  using Moment = std::chrono::steady_clock::time_point;
  using Duration = std::chrono::steady_clock::duration;
  struct Next;

  /// The time that a phone may be unseen.
  static constexpr std::chrono::seconds patience{12};

  std::optional<Moment> unseenSince;   ///< a phone is on the bus, the browser has none
  bool unseenCheckScheduled = false;   ///< a call of `checkedAgain` is pending
  bool phoneOnCableButUnseen = false;  ///< the user is informed

  /// Returns the next check. Must be called whenever the bus or the browser of phones reports a
  /// change. Changes of the state are written to the log.
  Next updated(bool isPhoneOnBus, bool browserHasDevice, Moment now, Log& log) const;
  /// As updated(), for the call that `checkAfter` requested.
  Next checkedAgain(bool isPhoneOnBus, bool browserHasDevice, Moment now, Log& log) const;

  friend bool operator==(const UnseenPhoneCheck&, const UnseenPhoneCheck&) = default;
};

struct UnseenPhoneCheck::Next {
  UnseenPhoneCheck check;
  /// The time after which `checkedAgain` must be called once; nullopt if no call is needed.
  std::optional<Duration> checkAfter;

  friend bool operator==(const Next&, const Next&) = default;
};

}  // namespace tavrix
