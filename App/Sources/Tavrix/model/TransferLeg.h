#pragma once

#include <exception>
#include <memory>
#include <set>
#include <stop_token>
#include <string>

#include "model/ConnectedSource.h"
#include "runs/PackedTransfer.h"
#include "runs/TransferJob.h"

namespace tavrix {

/// A destination locked for a run, with its content at that time.
struct HeldDestination {
  std::unique_ptr<Folder> folder;
  Destination::Content content;
};

/// A part of a run: from its start, or from a pause, to its end or the next pause. Carried out on
/// the transfer thread, which has exclusive use of it.
struct TransferLeg {
  TransferJob::Setup setup;
  std::shared_ptr<const TransferPlan> whole;  ///< the plan of the run
  TransferPlan plan;                          ///< the part of it still to be written
  std::optional<Packing> packing{};           ///< nullopt for plain folders
  Language language = Language::russian;      ///< of the reasons given to `paused`
  TimeZone zone = TimeZone::utc();            ///< for the wall-clock times in archives
  /// Called with the reason when packing waits for space, and with nullopt when it continues.
  std::function<void(const std::optional<std::string>& reason)> paused{};
  std::shared_ptr<const SourceFiles> files;
  AwaitPhone awaitPhone;
  HeldDestination destination;
  TransferEngine::Progress progress;
  std::stop_source stop;
};

/// The result of a leg.
struct LegEnd {
  TransferOutcome outcome;
  bool isPhoneLost = false;
  /// Set if the source could not be opened at all.
  std::exception_ptr failure;
};

/// Carries out a leg. If the phone is lost, the leg ends as soon as that is noticed, and the files
/// that failed for this reason are not in the report. Never throws.
LegEnd carryOut(TransferLeg& leg);

/// Returns the plan without the files of a report, which have landed or failed for good.
TransferPlan remainingPlan(const TransferPlan& plan, const TransferReport& report);
/// Returns the reports of two legs of one run as one, with the files in plan order.
TransferReport joined(TransferReport first, const TransferReport& second, const TransferPlan& plan);
/// Returns the outcomes of two legs as one. The later one determines the state of the run.
TransferOutcome joined(TransferOutcome first, TransferOutcome second, const TransferPlan& plan);

}  // namespace tavrix
