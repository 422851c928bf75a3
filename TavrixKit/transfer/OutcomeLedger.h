#pragma once

#include <mutex>
#include <optional>
#include <vector>

#include "transfer/TransferEngine.h"

namespace tavrix {

/// Collects the outcome of each file of a plan. Safe to use from several threads.
class OutcomeLedger {
 public:
  OutcomeLedger(const TransferPlan& plan, const TransferEngine::Setup& setup)
      : plan_(plan), setup_(setup), outcomes_(plan.files.size()) {}

  void fetched(std::uint64_t bytes);
  /// Takes back bytes that are fetched again.
  void takeBack(std::uint64_t bytes);
  void sizeMismatched();

  void failed(std::size_t index, FileOutcome::Failed failure);
  /// Records that the file is complete at `path`, found there or landed as `kind`; `bytesWritten`
  /// of its bytes are new. For `hasSafeName` see FileOutcome.
  void landed(std::size_t index, FileOutcome::Kind kind, const std::string& path,
              std::uint64_t size, std::uint64_t bytesWritten, std::optional<std::string> sha256,
              bool hasSafeName = false);

  bool isComplete() const { return settled_ == outcomes_.size(); }
  /// Returns the report of all outcomes so far, in plan order.
  TransferReport report() const;

 private:
  const TransferPlan& plan_;
  const TransferEngine::Setup& setup_;
  mutable std::mutex mutex_;
  std::vector<std::optional<FileOutcome>> outcomes_;
  std::size_t settled_ = 0;
  TransferReport counters_;
};

}  // namespace tavrix
