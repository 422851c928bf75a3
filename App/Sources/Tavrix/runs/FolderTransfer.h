#pragma once

#include <chrono>
#include <functional>
#include <stop_token>

#include "foundation/Log.h"
#include "foundation/Sentence.h"
#include "media/MediaSource.h"
#include "runs/Destination.h"
#include "runs/DestinationMemory.h"
#include "runs/RunOutcome.h"
#include "transfer/MediaConverter.h"
#include "transfer/TransferEngine.h"
#include "transfer/TransferPlan.h"

namespace tavrix {

/// One run into one destination. It updates the destination marker during the run, so that a killed
/// run loses little, and at the end, whatever the outcome.
class FolderTransfer {
 public:
  struct Setup {
    PhoneIdentity phone;
    MediaConverter* converter = nullptr;    ///< nullptr: files are not converted
    Language language = Language::russian;  ///< for the reasons in the report
    Log* log = nullptr;                     ///< nullptr: no logging
    std::function<Instant()> now;
    Shared<std::vector<DestinationMarker::FolderNote>> notes{};  ///< see DestinationMemory
    std::chrono::seconds saveInterval{20};  ///< between two saves of the landed files
  };

  /// The folder of the destination must be open for writing and outlive this object. `content` is
  /// its content at planning time.
  FolderTransfer(Setup setup, Folder& destination, Destination::Content content);

  /// Carries out a plan. For a plan without files, changes the destination only to remove claims of
  /// a killed run that are no longer wanted. Reports the errors of TransferEngine in the outcome
  /// and does not throw them.
  RunOutcome run(const TransferPlan& plan, MediaSource& source,
                 const TransferEngine::Progress& progress = {}, std::stop_token stop = {});

 private:
  RunOutcome execute(const TransferPlan& plan, MediaSource& source,
                     const TransferEngine::Progress& progress, std::stop_token stop);
  Log& log() const { return setup_.log == nullptr ? silentLog() : *setup_.log; }

  Setup setup_;
  Folder& destination_;
  DestinationMemory memory_;
};

}  // namespace tavrix
