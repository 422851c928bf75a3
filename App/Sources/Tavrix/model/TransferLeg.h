#pragma once

#include <exception>
#include <memory>
#include <set>
#include <stop_token>
#include <string>

#include "PackedTransfer.h"
#include "TransferJob.h"
#include "model/ConnectedSource.h"

namespace tavrix {

/// A destination that is held for a run, as it lay there when it was taken.
struct HeldDestination {
  std::unique_ptr<Folder> folder;
  Destination::Content content;
};

/// A part of a run: from its start, or from where it paused, to its end or the next pause. Carried
/// out on the transfer thread; nobody else uses it meanwhile.
struct TransferLeg {
  TransferJob::Setup setup;
  std::shared_ptr<const TransferPlan> whole;  ///< of the run
  TransferPlan plan;                          ///< what of it is still to be written
  std::optional<Packing> packing{};           ///< nothing for plain folders
  Language language = Language::russian;      ///< of what is told while the run waits
  TimeZone zone = TimeZone::utc();            ///< of the wall-clock times in archives
  /// Told while the packing waits for space, and that it goes on (nothing).
  std::function<void(const std::optional<std::string>& reason)> paused{};
  std::function<std::unique_ptr<MediaSource>(AwaitPhone, std::stop_token)> openMedia;
  AwaitPhone awaitPhone;
  HeldDestination destination;
  TransferEngine::Progress progress;
  std::stop_source stop;
};

/// How a leg ended.
struct LegEnd {
  TransferOutcome outcome;
  bool isPhoneLost = false;
  /// The source could not be opened at all.
  std::exception_ptr failure;
};

/// A lost phone ends the leg as soon as it is noticed; files that failed for that are not in the
/// report. Never throws.
LegEnd carryOut(TransferLeg& leg);

/// What is left of a plan when the files of a report have landed or failed for good.
TransferPlan remainingPlan(const TransferPlan& plan, const TransferReport& report);
/// The reports of two legs of one run as one; the files in the plan's order.
TransferReport joined(TransferReport first, const TransferReport& second, const TransferPlan& plan);
/// The same of outcomes: the later one tells how the run stands.
TransferOutcome joined(TransferOutcome first, TransferOutcome second, const TransferPlan& plan);

}  // namespace tavrix
