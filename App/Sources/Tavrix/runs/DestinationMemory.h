#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "foundation/Log.h"
#include "foundation/files/FileError.h"
#include "runs/Destination.h"
#include "transfer/TransferEngine.h"
#include "transfer/TransferPlan.h"

namespace tavrix {

/// Updates what a destination remembers of one phone. It saves during a run, so that a killed run
/// loses little, and at the end of a run, whatever its outcome.
class DestinationMemory {
 public:
  struct Setup {
    PhoneIdentity phone;
    Log* log = nullptr;  ///< nullptr: no logging
    std::function<Instant()> now;
    /// How the folders of the run got their names; recorded for those that get files.
    Shared<std::vector<DestinationMarker::FolderNote>> notes{};
    std::chrono::seconds saveInterval{20};  ///< between two saves of the landed files
  };

  /// The folder of the destination must be open for writing and outlive this object. `content` is
  /// its content at planning time.
  DestinationMemory(Setup setup, Folder& destination, Destination::Content content);

  /// Starts a run. Claims the paths where its files may land: if the run is killed, no picture of
  /// another phone with the same name is taken for them. Without a plan it claims nothing.
  void begin(const TransferPlan* claimed);
  /// Records a file that has just received its final name. Until the volume is synced, it stays a
  /// claim in what is saved: the power may fail, and a record must name no file that is lost then.
  void landed(const LandedFile& file);
  /// Frame a sync of the volume: the files that landed before the first are on stable storage when
  /// the second is called.
  void syncBegins() { syncing_ = landed_.size(); }
  void syncEnded() { synced_ = syncing_; }
  /// Records a file on stable storage that landed without a claim.
  void landed(DestinationMarker::FileRecord file);

  /// Replaces the claims by the landed files. If none landed, restores the earlier marker, unless
  /// the run may go on: by its claims it knows the folder. Returns the error if the landed files
  /// could not be saved, and nullopt otherwise.
  std::optional<FileError> settle(bool mayGoOn = false);
  /// As settle(), for a run without files. It changes the marker only to remove claims of a killed
  /// run that are no longer wanted.
  std::optional<FileError> settleWithoutFiles();

  const DestinationView& view() const { return content_.view; }
  Instant startedAt() const { return startedAt_; }

 private:
  /// Returns the record with the claims of a killed run whose files exist turned into files that
  /// were seen.
  DestinationMarker::PhoneRecord settled(DestinationMarker::PhoneRecord record);
  /// Returns this phone's record from before the run, with claims settled; nullptr if it has none.
  const DestinationMarker::PhoneRecord* earlier() const;
  /// Returns true if a claim of the planned file to a path adds information to the marker.
  bool isClaimed(const PlannedFile& file, const std::string& path) const;
  std::optional<ShotDate> dateOf(const PlannedFile& file) const;
  struct Landed {
    DestinationMarker::FileRecord file;
    bool wasThere = false;  ///< known to be on stable storage
  };
  /// Returns the files that have landed; those that are not synced are claims.
  std::vector<DestinationMarker::FileRecord> landedFiles() const;
  /// Returns the files that the run may still land, and those that have landed.
  std::vector<DestinationMarker::FileRecord> claims() const;
  /// Returns the notes of the folders that the plan writes into. The notes of the others stay.
  std::vector<DestinationMarker::FolderNote> notesFor(const TransferPlan* plan) const;
  void save(std::vector<DestinationMarker::FileRecord> files);
  void saveQuietly(std::vector<DestinationMarker::FileRecord> files);
  void saveFinal();
  /// Writes the record of the phone. A file that could not be read at the beginning is set aside.
  void keep(const DestinationMarker::PhoneRecord& record);

  Setup setup_;
  Folder& destination_;
  Destination::Content content_;
  std::vector<Landed> landed_;
  std::size_t syncing_ = 0;  ///< the number of those that had landed when the last sync began
  std::size_t synced_ = 0;   ///< the number of those that are on stable storage
  std::optional<DestinationMarker::PhoneRecord> settled_;  ///< nullopt: there were no claims
  bool hasKept_ = false;       ///< the record at the destination is of this object
  bool hasOldClaims_ = false;  ///< a killed run has left claims that must be settled
  std::vector<DestinationMarker::FolderNote> notes_;  ///< of the folders that get files
  const TransferPlan* claimed_ = nullptr;             ///< the plan of the current run
  Instant startedAt_;
  Instant savedAt_;
};

}  // namespace tavrix
