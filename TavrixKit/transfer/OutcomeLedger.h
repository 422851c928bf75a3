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
  /// A file that is complete at `path`, found there or landed.
  struct Landing {
    FileOutcome::Kind kind;
    std::string path;
    std::uint64_t size = 0;
    std::uint64_t bytesWritten = 0;  ///< the new ones among its bytes
    std::optional<std::string> sha256{};
    bool hasSafeName = false;  ///< see FileOutcome, as for the next one
    bool isMisnamed = false;
  };
  void landed(std::size_t index, Landing landing);
  /// Frame a sync of the volume, and report it to the owner of the run.
  void syncBegins();
  void syncEnded();
  /// Takes back the outcomes of the files that landed or were found since the last sync: after one
  /// that failed, their names may be in memory alone.
  void takeBackUnsynced();

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
  struct Unsynced {
    std::size_t index;
    std::uint64_t bytesWritten;
  };
  std::vector<Unsynced> unsynced_;  ///< in the order of landing
  std::size_t syncing_ = 0;         ///< the number of those when the last sync began
};

}  // namespace tavrix
