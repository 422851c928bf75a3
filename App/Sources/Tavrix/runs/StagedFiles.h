#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "foundation/Sentence.h"
#include "runs/ArchivePacker.h"
#include "runs/ArchivePlan.h"
#include "transfer/TransferEngine.h"

namespace tavrix {

/// The files of a packing run by their index in its plan. Tracks where each one is from the time it
/// is fetched until it is in an archive or a folder.
class StagedFiles {
 public:
  /// The plan must outlive the object. The language is used for the reasons in outcomes.
  StagedFiles(const TransferPlan& plan, Language language)
      : plan_(plan), language_(language), files_(plan.files.size()) {}

  /// Records that the file with that index is in the staging folder.
  void staged(std::size_t index, const LandedFile& file);
  /// Takes over the failures from a report of the staging.
  void takeFailures(const TransferReport& report);
  /// Returns the size of the files that have no outcome yet, in bytes.
  std::uint64_t bytesToStage() const;

  /// Returns the content of an archive. Files without a capture date get the time `undated`. A file
  /// that must not be archived is marked as failed.
  ArchiveContent contentOf(const PlannedArchive& archive, Instant undated);
  /// Records that the files of the archive are in it, at `path`.
  void packed(const PlannedArchive& archive, const std::string& path);
  /// Moves the files of the archive out of the staging folder instead. Calls `landed` with the
  /// marker record of each. Throws FileError.
  void moveOut(const PlannedArchive& archive, Folder& destination,
               const std::function<void(DestinationMarker::FileRecord)>& landed);

  /// Adds the outcome of every file to the counts made while staging. A file that is only staged
  /// was not reached.
  TransferReport report(TransferReport counted) const;

 private:
  struct File {
    std::optional<FileOutcome> outcome;  ///< with the staged path, later with the final one
    std::optional<std::string> sha256;
    std::string entryName;   ///< in the archive
    bool isSettled = false;  ///< in its final place, or failed
  };

  bool isUnsettled(const File& file) const {
    return !file.isSettled && file.outcome && file.outcome->path;
  }
  void refuse(File& file) const;
  /// Returns the path that a file was meant to get in the destination.
  std::string plannedPath(std::size_t index) const;

  const TransferPlan& plan_;
  Language language_;
  std::vector<File> files_;
};

}  // namespace tavrix
