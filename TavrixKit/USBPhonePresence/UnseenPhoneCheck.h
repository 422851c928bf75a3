#pragma once

#include <chrono>
#include <optional>

#include "foundation/Log.h"

namespace tavrix {

/// Notices a phone that is on the bus and yet is not handed over: when that has lasted for 12
/// seconds, the person is told. A value; each step gives the next one. Moments are those of a
/// steady clock.
struct UnseenPhoneCheck {
  using Moment = std::chrono::steady_clock::time_point;
  using Duration = std::chrono::steady_clock::duration;
  struct Next;

  /// How long a phone may be unseen.
  static constexpr std::chrono::seconds patience{12};

  std::optional<Moment> unseenSince;   ///< a phone on the bus, and nothing from the browser
  bool unseenCheckScheduled = false;   ///< a call of `checkedAgain` is under way
  bool phoneOnCableButUnseen = false;  ///< what the person is told

  /// To be taken whenever the bus or the browser of phones tells something new. What happens is
  /// written to the log.
  Next updated(bool isPhoneOnBus, bool browserHasDevice, Moment now, Log& log) const;
  /// The step that `checkAfter` asked for.
  Next checkedAgain(bool isPhoneOnBus, bool browserHasDevice, Moment now, Log& log) const;

  friend bool operator==(const UnseenPhoneCheck&, const UnseenPhoneCheck&) = default;
};

struct UnseenPhoneCheck::Next {
  UnseenPhoneCheck check;
  /// After so long `checkedAgain` is to be called, once.
  std::optional<Duration> checkAfter;

  friend bool operator==(const Next&, const Next&) = default;
};

}  // namespace tavrix
