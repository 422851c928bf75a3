#pragma once

#include <functional>
#include <mutex>

#include "transfer/TransferPlan.h"
#include "transfer/TransferReport.h"

namespace tavrix {

/// Counts the progress of a run and reports it to the receiver after each step, one call at a time.
/// Safe to use from several threads.
class ProgressMeter {
 public:
  using Receiver = std::function<void(const TransferProgressSnapshot&)>;

  ProgressMeter(const TransferPlan& plan, Receiver receiver);

  void began(const PlannedFile& file, TransferStage stage);
  void received(std::uint64_t bytes);
  void verified();
  /// Takes back what was counted of a file that is fetched again: its received bytes, and that it
  /// was verified.
  void takeBack(std::uint64_t received, bool wasVerified);
  /// Reports the converted fraction of a file, 0 to 1.
  void converting(const PlannedFile& file, double fraction);
  void converted();
  /// Counts a file that got its outcome; `received` bytes of it have been counted already.
  void finished(const PlannedFile& file, std::uint64_t received);

 private:
  template <typename Change>
  void update(Change change);

  Receiver receiver_;
  std::mutex mutex_;
  TransferProgressSnapshot snapshot_;
};

}  // namespace tavrix
