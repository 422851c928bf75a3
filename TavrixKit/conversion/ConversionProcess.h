#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <stop_token>
#include <string>

#include "conversion/Conversion.h"

namespace tavrix {

/// The resource limits of one conversion process. Exceeding them ends the process.
struct ConversionLimits {
  std::uint64_t memoryBytes = std::uint64_t{2} << 30U;  ///< address space
  std::chrono::seconds processorTime{60};
  std::chrono::seconds silence{300};  ///< longest pause between two reports; generous, because
                                      ///< other programs may load the machine
  std::uint64_t resultBytes = std::uint64_t{512} << 20U;

  friend bool operator==(const ConversionLimits&, const ConversionLimits&) = default;
};

/// Runs each conversion in a process of its own, with the program `tavrix-convert`. A process has
/// the two files and a pipe to its parent, no other files and no network. A hostile file that
/// breaks the process costs only that one conversion.
namespace ConversionProcess {

/// Starts `program` for one file and waits until it ends. Kills it within half a second of a `stop`
/// request. Throws ConversionError, and FileError with `resultPath` if the result cannot be
/// written.
ConversionResult run(const std::string& program, const PlannedConversion& conversion,
                     const ConversionFiles& files, const ConversionLimits& limits,
                     const std::string& resultPath, const ConversionProgress& progress,
                     std::stop_token stop);

}  // namespace ConversionProcess

}  // namespace tavrix
