#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

#include "model/ConnectedSource.h"
#include "runs/FolderTransfer.h"
#include "runs/PackedTransfer.h"

namespace tavrix {

/// A destination locked for a run, with its content at that time.
struct HeldDestination {
  std::unique_ptr<Folder> folder;
  Destination::Content content;
};

/// A part of a run: from its start, or from a pause, to its end or the next pause. Carried out on
/// the transfer thread, which has exclusive use of it.
struct RunAttempt {
  FolderTransfer::Setup setup;
  std::shared_ptr<const TransferPlan> plan;  ///< of the whole run
  RunOutcome before;                         ///< of the earlier attempts; their files are done
  std::optional<Packing> packing{};          ///< nullopt for plain folders
  TimeZone zone = TimeZone::utc();           ///< for the wall-clock times in archives
  /// Called with the shortage when packing waits for space, and with nullopt when it continues.
  std::function<void(const std::optional<run_pause::DiskFull>& shortage)> paused{};
  std::shared_ptr<const SourceFiles> files;
  AwaitPhone awaitPhone;
  HeldDestination destination;
  TransferEngine::Progress progress;
  std::stop_source stop;
};

/// The result of an attempt.
struct AttemptEnd {
  RunOutcome outcome;                ///< of all attempts so far
  bool hasLanded = false;            ///< this attempt has settled at least one file
  std::uint64_t converted = 0;       ///< the converted files of all attempts so far
  std::uint64_t remainingBytes = 0;  ///< of the files that are not settled
  bool isPhoneLost = false;
  /// Set if the source could not be opened at all.
  std::exception_ptr failure;
};

/// Carries out an attempt. If the phone is lost, the attempt ends as soon as that is noticed, and
/// the files that failed for this reason are not in the report. Never throws.
AttemptEnd carryOut(RunAttempt& attempt);

/// Returns the plan without the files of a report, which have landed or failed for good.
TransferPlan remainingPlan(const TransferPlan& plan, const TransferReport& report);
/// Returns the reports of two attempts of one run as one, with the files in plan order.
TransferReport joined(TransferReport first, const TransferReport& second, const TransferPlan& plan);
/// Returns the outcomes of two attempts as one. The later one determines the state of the run.
RunOutcome joined(const RunOutcome& first, RunOutcome second, const TransferPlan& plan);

}  // namespace tavrix
