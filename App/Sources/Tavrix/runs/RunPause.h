#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "device/cable/Phones.h"
#include "foundation/Sentence.h"

namespace tavrix {

/// The reason why a run waits. It continues by itself when the reason is gone.
namespace run_pause {
/// The phone cannot be reached.
struct Phone {
  std::string deviceName;
  PhoneError::Kind kind = PhoneError::Kind::gone;
  friend bool operator==(const Phone&, const Phone&) = default;
};
/// The volume of the destination is full.
struct DiskFull {
  std::uint64_t missingBytes = 0;  ///< needed beyond the free space
  std::uint64_t freeBytes = 0;
  friend bool operator==(const DiskFull&, const DiskFull&) = default;
};
/// The volume of the destination went away.
struct Destination {
  std::string path;
  friend bool operator==(const Destination&, const Destination&) = default;
};
/// Another run is writing to the destination.
struct Busy {
  friend bool operator==(const Busy&, const Busy&) = default;
};
}  // namespace run_pause
using RunPause =
    std::variant<run_pause::Phone, run_pause::DiskFull, run_pause::Destination, run_pause::Busy>;

/// Returns the reason and what the user can do about it, as one or more sentences.
std::string pauseText(Language language, const RunPause& pause);

}  // namespace tavrix
