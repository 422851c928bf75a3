#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tavrix {

/// The properties and the behaviour of a simulated phone.
struct SimulatedPhone {
  /// The answer to a computer that asks to be trusted.
  enum class Trust {
    trusted,  ///< it knows the computer already
    asking,   ///< it agrees as soon as it is asked
    pending,  ///< its question is on the screen, unanswered
    denied,   ///< the user said no
  };

  /// A fault at a call of the phone. The calls are the requests about its state and its files.
  struct Fault {
    enum class Kind {
      leaves,       ///< it leaves the cable before it answers
      leavesHalf,   ///< it leaves the cable in the middle of the answer
      stalls,       ///< it stays on the cable and answers nothing more
      losesAnswer,  ///< it does what it is asked, and the connection ends without an answer
    };
    Kind kind = Kind::leaves;
    std::uint64_t callsBefore = 0;  ///< the calls that it still answers

    friend bool operator==(const Fault&, const Fault&) = default;
  };

  std::string root;  ///< the folder that contains its DCIM; never written to
  std::string deviceID = "00008110-0000000000000001";  ///< its identifier on the bus
  std::string serialNumber = "SIMULATED1";             ///< if empty, it reports none
  std::string name = "iPhone";
  std::string productType = "iPhone14,5";
  std::string productVersion = "17.5.1";
  Trust trust = Trust::trusted;
  bool isLocked = false;
  bool usesTLS = true;
  bool isPluggedIn = true;

  std::chrono::microseconds latency{0};  ///< before each answer to a file call
  /// It leaves the cable once it has sent this many bytes of files, in the middle of an answer.
  std::optional<std::uint64_t> vanishesAfterBytes;
  std::optional<Fault> fault;  ///< it strikes once
  /// The time after which it comes back from a departure, or answers again after a stall.
  std::optional<std::chrono::milliseconds> returnsAfter;
  /// Once it has sent this many bytes of files, it stays on the cable and answers nothing more.
  std::optional<std::uint64_t> hangsAfterBytes;
  bool hangs = false;  ///< it answers nothing, not even a greeting
  /// Files whose path ends with one of these answer every read with an error, and folders every
  /// listing.
  std::vector<std::string> unreadable;

  friend bool operator==(const SimulatedPhone&, const SimulatedPhone&) = default;
};

}  // namespace tavrix
