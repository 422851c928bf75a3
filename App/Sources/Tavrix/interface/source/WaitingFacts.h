#pragma once

#include <array>
#include <optional>
#include <string>

#include "interface/session/OpenedSource.h"
#include "model/AppState.h"

namespace tavrix::window {

/// The screen of a window that has no catalogue yet: what is going on and what to do now.
struct WaitingFacts {
  enum class Step { open, now, done };

  std::string title{};
  std::string text{};
  /// Plugging in, unlocking, trusting. Absent if they are not what is missing.
  std::optional<std::array<Step, 3>> steps{};
  bool isBusy = false;               ///< the program works, without a user
  std::optional<double> fraction{};  ///< of the work that is done, 0 to 1, if it is known
  std::string counts{};              ///< "1 204 / 31 206 файлов · из кэша: 1 100"
  bool canStop = false;
  std::string retry{};  ///< the button that tries again; empty if that is pointless
  bool isFolder = false;
  bool isFault = false;  ///< something is wrong

  friend bool operator==(const WaitingFacts&, const WaitingFacts&) = default;
};

/// Returns the facts about the phones on the cable, or about the folder that is being opened.
WaitingFacts waitingFacts(Language language, const DeviceFacts& device, const OpenedSource& source);

/// Returns the progress of a pass over metadata, and nullopt if none is under way.
std::optional<MetadataPass::Progress> readingProgress(const DeviceFacts& device,
                                                      const OpenedSource& source);

}  // namespace tavrix::window
