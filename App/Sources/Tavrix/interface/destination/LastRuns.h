#pragma once

#include <optional>
#include <string>

#include "foundation/Log.h"
#include "foundation/Time.h"

namespace tavrix::window {

/// The last runs of a phone, by the history.
struct LastRuns {
  /// The destination of the last one; nullopt if there is none, or if that folder does not exist
  /// now.
  std::optional<std::string> destination;
  std::optional<Instant> here{};  ///< the begin of the last one into the given destination

  friend bool operator==(const LastRuns&, const LastRuns&) = default;
};

/// Looks for the runs in the history of a state folder. Reads files.
LastRuns lastRuns(const std::string& stateFolder, const std::string& phoneHash,
                  const std::optional<std::string>& destination, Log& log);

}  // namespace tavrix::window
