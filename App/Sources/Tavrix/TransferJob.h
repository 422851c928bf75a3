#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <stop_token>

#include "Destination.h"
#include "foundation/Log.h"
#include "foundation/Sentence.h"
#include "foundation/files/FileError.h"
#include "history/TransferRecord.h"
#include "media/MediaSource.h"
#include "transfer/MediaConverter.h"
#include "transfer/TransferEngine.h"
#include "transfer/TransferPlan.h"

namespace tavrix {

struct TransferOutcome {
  TransferRecord::Status status = TransferRecord::Status::completed;
  /// Folders of the source whose files nobody could list.
  std::uint64_t unreadFolders = 0;
  /// How often the run waited for a phone that was out of reach.
  std::uint64_t phoneWaits = 0;
  TransferReport report;  ///< of what got through, however the run ended
  /// What ended an `interrupted` run.
  std::optional<FileError> interruption;
  /// The destination could not be told what landed: the next run goes by the files alone.
  std::optional<FileError> markerFailure;
};

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
  TransferOutcome withoutFiles();
  void remember(const LandedFile& file);
  /// What an earlier run was killed over and is there counts from now on as seen.
  void settleClaims(DestinationMarker::PhoneRecord& record);
  /// Whether a planned file's claim to a path says more than the marker does already.
  bool isClaimed(const PlannedFile& file, const std::string& path) const;
  /// What the run may still land, and what it has landed.
  std::vector<DestinationMarker::FileRecord> claims() const;
  void saveMarker(std::vector<DestinationMarker::FileRecord> files);
  void saveQuietly(std::vector<DestinationMarker::FileRecord> files);
  /// Replaces the claims by what landed; where nothing did, the marker is again as it was.
  void settleMarker();
  TransferOutcome execute(const TransferPlan& plan, MediaSource& source,
                          const TransferEngine::Progress& progress, std::stop_token stop);
  Log& log() const { return setup_.log == nullptr ? silentLog() : *setup_.log; }

  Setup setup_;
  Folder& destination_;
  Destination::Content content_;
  std::vector<DestinationMarker::FileRecord> landed_;
  bool hasOldClaims_ = false;  ///< an earlier run was killed, and its record shall not stay so
  const TransferPlan* planned_ = nullptr;  ///< of the run that is under way
  Instant startedAt_;
  Instant savedAt_;
};

}  // namespace tavrix
