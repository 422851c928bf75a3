#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Destination.h"
#include "foundation/Log.h"
#include "foundation/files/FileError.h"
#include "transfer/TransferEngine.h"
#include "transfer/TransferPlan.h"

namespace tavrix {

/// What a destination remembers of one phone, kept up while a run is at work: so a run that is
/// killed forgets little, and at its end, however it ends, all that landed is remembered.
class DestinationMemory {
 public:
  struct Setup {
    PhoneIdentity phone;
    Log* log = nullptr;  ///< silent without one
    std::function<Instant()> now;
    std::chrono::seconds saveInterval{20};  ///< between two savings of what landed
  };

  /// The destination's folder must be open for writing and stay so. `content` is what lay in it
  /// when the plan was made.
  DestinationMemory(Setup setup, Folder& destination, Destination::Content content);

  /// A run begins. What it may land is claimed: no other phone's picture of the same name is then
  /// taken for it, should the run be killed. Without a plan nothing is claimed.
  void begin(const TransferPlan* claimed);
  /// A file that has just got its final name.
  void landed(const LandedFile& file);
  /// Something else that landed and was not claimed.
  void landed(DestinationMarker::FileRecord file);

  /// Replaces the claims by what landed; where nothing did, the marker is again as it was. Gives
  /// why what landed could not be saved; nothing when it was.
  std::optional<FileError> settle();
  /// The same for a run without files, which leaves the marker alone but for what a killed run
  /// meant to write and nobody wants any more.
  std::optional<FileError> settleWithoutFiles();

  const DestinationView& view() const { return content_.view; }
  Instant startedAt() const { return startedAt_; }

 private:
  /// What an earlier run was killed over and is there counts from now on as seen.
  void settleClaims(DestinationMarker::PhoneRecord& record);
  /// Whether a planned file's claim to a path says more than the marker does already.
  bool isClaimed(const PlannedFile& file, const std::string& path) const;
  std::optional<ShotDate> dateOf(const PlannedFile& file) const;
  /// What the run may still land, and what it has landed.
  std::vector<DestinationMarker::FileRecord> claims() const;
  void save(std::vector<DestinationMarker::FileRecord> files);
  void saveQuietly(std::vector<DestinationMarker::FileRecord> files);
  void saveFinal();

  Setup setup_;
  Folder& destination_;
  Destination::Content content_;
  std::vector<DestinationMarker::FileRecord> landed_;
  bool hasOldClaims_ = false;  ///< an earlier run was killed, and its record shall not stay so
  const TransferPlan* claimed_ = nullptr;  ///< of the run that is under way
  Instant startedAt_;
  Instant savedAt_;
};

}  // namespace tavrix
