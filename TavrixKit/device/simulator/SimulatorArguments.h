#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "device/simulator/SimulatedPhone.h"

namespace tavrix {

/// The phone and the socket that the command line of the simulator asks for.
struct SimulatorArguments {
  SimulatedPhone phone;
  std::string socketPath;

  /// Parses the words of a command line. Returns nullopt if they are not valid.
  static std::optional<SimulatorArguments> parse(const std::vector<std::string_view>& words);
  static const char* const usage;

  friend bool operator==(const SimulatorArguments&, const SimulatorArguments&) = default;
};

}  // namespace tavrix
