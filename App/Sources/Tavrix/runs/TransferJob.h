#pragma once

#include <chrono>
#include <functional>
#include <stop_token>

#include "Destination.h"
#include "DestinationMemory.h"
#include "TransferOutcome.h"
#include "foundation/Log.h"
#include "foundation/Sentence.h"
#include "media/MediaSource.h"
#include "transfer/MediaConverter.h"
#include "transfer/TransferEngine.h"
#include "transfer/TransferPlan.h"

namespace tavrix {

/// One run into one destination, with the destination's memory of it: what lands is remembered
/// while the run goes on, so that a run that is killed forgets little, and at its end, however it
/// ends.
class TransferJob {
 public:
  struct Setup {
    PhoneIdentity phone;
    MediaConverter* converter = nullptr;    ///< without one, files are kept as they are
    Language language = Language::russian;  ///< of the reasons in the report
    Log* log = nullptr;                     ///< silent without one
    std::function<Instant()> now;
    std::chrono::seconds saveInterval{20};  ///< between two savings of what landed
  };

  /// The destination's folder must be open for writing and stay so. `content` is what lay in it
  /// when the plan was made.
  TransferJob(Setup setup, Folder& destination, Destination::Content content);

  /// Carries out a plan. A plan without files leaves the destination as it is, except that it drops
  /// what a killed run meant to write and nobody wants any more. Never throws what
  /// TransferEngine throws: that is in the outcome.
  TransferOutcome run(const TransferPlan& plan, MediaSource& source,
                      const TransferEngine::Progress& progress = {}, std::stop_token stop = {});

 private:
  TransferOutcome execute(const TransferPlan& plan, MediaSource& source,
                          const TransferEngine::Progress& progress, std::stop_token stop);
  Log& log() const { return setup_.log == nullptr ? silentLog() : *setup_.log; }

  Setup setup_;
  Folder& destination_;
  DestinationMemory memory_;
};

}  // namespace tavrix
