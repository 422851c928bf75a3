#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>

#include "foundation/Log.h"
#include "foundation/Sentence.h"
#include "foundation/files/Folder.h"

namespace tavrix {

/// Waits, in the middle of a run, until a destination has room for what is next.
class SpaceWait {
 public:
  struct Setup {
    Log* log = nullptr;                     ///< silent without one
    Language language = Language::russian;  ///< of what the person is told
    /// Tells the person why the run waits, once for each wait, and that it goes on (nothing).
    std::function<void(const std::optional<std::string>& reason)> paused = nullptr;
    /// Returns after the time, or earlier when asked to stop. The real clock without one.
    std::function<void(std::chrono::milliseconds time, const std::stop_token& stop)> sleep =
        nullptr;
  };
  /// Writes the line of the log that says how much is needed and free.
  using LogLine = std::function<void(Log& log, std::uint64_t needed, std::uint64_t free)>;

  static constexpr std::chrono::seconds interval{5};

  SpaceWait(Setup setup, const Folder& destination, std::stop_token stop);

  /// Returns when `needed` bytes are free: at once, unless `wasFull`, because something just found
  /// no room whatever the volume says; then after one interval at least. False when it was asked to
  /// stop before. Throws FileError.
  bool await(std::uint64_t needed, bool wasFull, const LogLine& logLine);

 private:
  Setup setup_;
  const Folder& destination_;
  std::stop_token stop_;
};

}  // namespace tavrix
