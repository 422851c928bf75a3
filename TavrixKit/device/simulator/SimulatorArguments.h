#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "device/simulator/SimulatedPhone.h"

namespace tavrix {

/// What the program is asked to simulate.
struct SimulatorArguments {
  SimulatedPhone phone;
  std::string socketPath;

  /// Nothing when the words make no sense.
  static std::optional<SimulatorArguments> parse(const std::vector<std::string_view>& words);
  static const char* const usage;

  friend bool operator==(const SimulatorArguments&, const SimulatorArguments&) = default;
};

}  // namespace tavrix
