#pragma once

#include <optional>
#include <string>
#include <vector>

#include "model/AppState.h"

namespace tavrix::window {

/// The destination and the effect of a transfer, in words.
struct DestinationAdvice {
  enum class Tone { quiet, warning, bad };

  /// The state of the folder, in one line; empty if no folder is chosen.
  std::string status;
  Tone tone = Tone::quiet;  ///< of `status`
  /// Sentences to know before the transfer.
  std::vector<std::string> warnings;
  /// The settings with which the files that are there keep their names; nullopt if none would be
  /// copied again, or if settings alone do not help.
  std::optional<Settings> keepingNames;
  /// The bytes of the transfer: "142 ГБ"; why there are none, if so.
  std::string effect;
  std::string button;
  bool isEverythingInPlace = false;

  friend bool operator==(const DestinationAdvice&, const DestinationAdvice&) = default;
};

DestinationAdvice adviceOf(Language language, const AppState& state,
                           const std::string& systemLocaleID);

/// Returns the most bytes that a transfer needs at any one time. Archives exist at the same time as
/// the files that they are made from.
std::uint64_t neededBytes(const AppState& state);

}  // namespace tavrix::window
