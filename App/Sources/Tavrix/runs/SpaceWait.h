#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <stop_token>

#include "foundation/Log.h"
#include "foundation/files/Folder.h"
#include "runs/RunPause.h"

namespace tavrix {

/// Pauses a run until the destination has enough space to continue.
class SpaceWait {
 public:
  struct Setup {
    Log* log = nullptr;  ///< nullptr: no logging
    /// Called with the shortage when a wait begins, and with nullopt when the run continues.
    std::function<void(const std::optional<run_pause::DiskFull>& shortage)> paused = nullptr;
    /// Returns after the time, or earlier if a stop is requested. By default it waits in real time.
    std::function<void(std::chrono::milliseconds time, const std::stop_token& stop)> sleep =
        nullptr;
  };
  /// Writes the log line with the needed and the free bytes.
  using LogLine = std::function<void(Log& log, std::uint64_t needed, std::uint64_t free)>;

  static constexpr std::chrono::seconds interval{5};

  SpaceWait(Setup setup, const Folder& destination, std::stop_token stop);

  /// Returns true once `needed` bytes are free. Returns at once if they are free already, unless
  /// `wasFull`: then a write has just failed for lack of space, whatever the volume reports, so it
  /// waits for at least one interval. Returns false if a stop is requested first. Throws FileError.
  bool await(std::uint64_t needed, bool wasFull, const LogLine& logLine);

 private:
  Setup setup_;
  const Folder& destination_;
  std::stop_token stop_;
};

}  // namespace tavrix
