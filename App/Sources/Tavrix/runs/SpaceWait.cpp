#include "runs/SpaceWait.h"

#include <condition_variable>
#include <mutex>

namespace tavrix {
namespace {

void sleepFor(std::chrono::milliseconds time, const std::stop_token& stop) {
  std::mutex mutex;
  std::condition_variable_any wakes;
  std::unique_lock lock{mutex};
  wakes.wait_for(lock, stop, time, [] { return false; });
}

}  // namespace

SpaceWait::SpaceWait(Setup setup, const Folder& destination, std::stop_token stop)
    : setup_(std::move(setup)), destination_(destination), stop_(std::move(stop)) {
  if (!setup_.sleep) setup_.sleep = sleepFor;
}

bool SpaceWait::await(std::uint64_t needed, bool wasFull, const LogLine& logLine) {
  std::uint64_t free = destination_.freeBytes();
  if (free >= needed && !wasFull) return !stop_.stop_requested();
  // It was full, whatever else the volume reports.
  if (free == Folder::unknownFreeBytes) free = 0;
  Log& log = setup_.log == nullptr ? silentLog() : *setup_.log;
  logLine(log, needed, free);
  if (setup_.paused) {
    setup_.paused(run_pause::DiskFull{needed > free ? needed - free : needed, free});
  }
  do {
    setup_.sleep(interval, stop_);
    if (stop_.stop_requested()) return false;
    // An open folder of a volume that went may still report its space.
    if (!destination_.exists()) {
      throw FileError{FileOperation::status, destination_.path(), ENOENT};
    }
    free = destination_.freeBytes();
  } while (free < needed);
  writeLog(log, "transfer: space freed — continuing");
  if (setup_.paused) setup_.paused(std::nullopt);
  return true;
}

}  // namespace tavrix
