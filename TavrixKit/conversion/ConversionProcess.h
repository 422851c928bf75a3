#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <stop_token>
#include <string>

#include "conversion/Conversion.h"

namespace tavrix {

/// What the process of one conversion may use; what goes beyond ends it.
struct ConversionLimits {
  std::uint64_t memoryBytes = std::uint64_t{2} << 30U;  ///< address space
  std::chrono::seconds processorTime{60};
  std::chrono::seconds silence{300};  ///< between two signs of life; others may need the machine
  std::uint64_t resultBytes = std::uint64_t{512} << 20U;

  friend bool operator==(const ConversionLimits&, const ConversionLimits&) = default;
};

/// Conversions in processes of their own: this program again, with a hidden first argument. A
/// process has the two files and a pipe for what it tells, no others and no network; a hostile file
/// that breaks it costs that one conversion.
namespace ConversionProcess {

/// The hidden first argument.
inline constexpr const char* argument = "--convert-in-child";

/// Starts `program` for one file and waits for it; ended within half a second of `stop`. Throws
/// ConversionError, and FileError with `resultPath` when the result cannot be written.
ConversionResult run(const std::string& program, const PlannedConversion& conversion,
                     const ConversionFiles& files, const ConversionLimits& limits,
                     const std::string& resultPath, const ConversionProgress& progress,
                     std::stop_token stop);

/// The life of such a process, from the program's `main`: nothing when the arguments are not those
/// of one, else its exit status.
std::optional<int> runAsChild(int argc, char** argv);

}  // namespace ConversionProcess

}  // namespace tavrix
