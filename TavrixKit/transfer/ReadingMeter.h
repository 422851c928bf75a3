#pragma once

#include <algorithm>
#include <functional>
#include <mutex>
#include <string>

#include "transfer/TransferReport.h"

namespace tavrix {

/// Counts the progress of reading many files and reports it to the receiver after each step, one
/// call at a time. Safe to use from several threads.
class ReadingMeter {
 public:
  using Receiver = std::function<void(const TransferProgressSnapshot&)>;

  ReadingMeter(std::uint64_t filesTotal, std::uint64_t bytesTotal, Receiver receiver)
      : receiver_(std::move(receiver)) {
    snapshot_.filesTotal = filesTotal;
    snapshot_.bytesTotal = bytesTotal;
    snapshot_.stage = TransferStage::verifying;
  }

  void began(std::string fileName) {
    update([&](auto& snapshot) { snapshot.currentFileName = std::move(fileName); });
  }
  void read(std::uint64_t bytes) {
    update([&](auto& snapshot) { snapshot.bytesDone += bytes; });
  }
  /// Counts a finished file; `bytesRead` bytes of its expected size have been counted already.
  void finished(std::uint64_t expected, std::uint64_t bytesRead) {
    update([&](auto& snapshot) {
      ++snapshot.filesDone;
      snapshot.bytesDone += expected - std::min(expected, bytesRead);
    });
  }

 private:
  template <typename Change>
  void update(Change change) {
    if (!receiver_) return;
    const std::lock_guard lock{mutex_};
    change(snapshot_);
    receiver_(snapshot_);
  }

  Receiver receiver_;
  std::mutex mutex_;
  TransferProgressSnapshot snapshot_;
};

}  // namespace tavrix
