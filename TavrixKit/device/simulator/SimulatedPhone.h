#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tavrix {

/// What a simulated phone is and how it behaves.
struct SimulatedPhone {
  /// What it answers when a computer asks to be trusted.
  enum class Trust {
    trusted,  ///< the computer is known to it
    asking,   ///< it agrees as soon as it is asked
    pending,  ///< its question stands unanswered on the screen
    denied,   ///< the person said no
  };

  std::string root;  ///< the folder that holds its DCIM; never written to
  std::string deviceID = "00008110-0000000000000001";  ///< what the bus calls it
  std::string serialNumber = "SIMULATED1";             ///< when empty, it tells none
  std::string name = "iPhone";
  std::string productType = "iPhone14,5";
  std::string productVersion = "17.5.1";
  Trust trust = Trust::trusted;
  bool isLocked = false;
  bool usesTLS = true;
  bool isPluggedIn = true;

  std::chrono::microseconds latency{0};  ///< before each answer to a call on files
  /// It leaves the cable when so many bytes of files were sent, in the middle of an answer.
  std::optional<std::uint64_t> vanishesAfterBytes;
  std::optional<std::chrono::milliseconds> returnsAfter;  ///< and comes back
  /// It stays on the cable and answers nothing any more when so many bytes of files were sent.
  std::optional<std::uint64_t> hangsAfterBytes;
  bool hangs = false;  ///< it answers nothing, not even a greeting
  /// Files whose path ends so answer every read with an error, and folders every listing.
  std::vector<std::string> unreadable;

  friend bool operator==(const SimulatedPhone&, const SimulatedPhone&) = default;
};

}  // namespace tavrix
