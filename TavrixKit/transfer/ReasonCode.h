#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "foundation/json/JsonWriter.h"

namespace tavrix {

/// The reason for the outcome of a file as a value, for programs: the same in every language.
struct ReasonCode {
  /// "notInSource", "unreadable", "changedWhileRead", "unsafeName", "disconnected", "sourceFailed",
  /// "outsideDestination", "unwritable", "sizesDiffer", "tooManyBytes", "notForArchives" or
  /// "notRegular" for a failed file; the name of a ConversionFailure for an unconverted one; that
  /// of a DifferingFile::Kind for a file that was left in place.
  std::string code{};
  std::optional<int> systemError{};  ///< errno
  std::optional<std::uint64_t> expectedBytes{};
  std::optional<std::uint64_t> receivedBytes{};

  friend bool operator==(const ReasonCode&, const ReasonCode&) = default;
};

/// Writes the reason as an object. Leaves out what is absent.
void encode(const ReasonCode& reason, JsonWriter& json);

}  // namespace tavrix
