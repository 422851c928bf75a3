#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "ArchivePacker.h"
#include "ArchivePlan.h"
#include "foundation/Sentence.h"
#include "transfer/TransferEngine.h"

namespace tavrix {

/// The files of a run that packs, by their index in its plan: where each is between its fetching
/// and its place in an archive or a folder.
class StagedFiles {
 public:
  /// The language is that of the reasons in outcomes. The plan must stay.
  StagedFiles(const TransferPlan& plan, Language language)
      : plan_(plan), language_(language), files_(plan.files.size()) {}

  /// The file of that index lies in the staging folder.
  void staged(std::size_t index, const LandedFile& file);
  /// Takes from a report of the staging what failed.
  void takeFailures(const TransferReport& report);
  /// Bytes of the files that have no outcome yet.
  std::uint64_t bytesToStage() const;

  /// What is to go into an archive. Files without a capture date get the time given. A file that no
  /// archive takes has failed from now on.
  ArchiveContent contentOf(const PlannedArchive& archive, Instant undated);
  /// The archive's files lie in it, under its path.
  void packed(const PlannedArchive& archive, const std::string& path);
  /// Moves the archive's files out of the staging folder instead. `landed` is told of each what the
  /// destination is to remember. Throws FileError.
  void moveOut(const PlannedArchive& archive, Folder& destination,
               const std::function<void(DestinationMarker::FileRecord)>& landed);

  /// Adds to what was counted while staging what became of every file. One that is only staged was
  /// not reached.
  TransferReport report(TransferReport counted) const;

 private:
  struct File {
    std::optional<FileOutcome> outcome;  ///< with the staged path, later with the final one
    std::optional<std::string> sha256;
    std::string entryName;   ///< in its archive
    bool isSettled = false;  ///< it will not move any more, or has failed
  };

  bool isUnsettled(const File& file) const {
    return !file.isSettled && file.outcome && file.outcome->path;
  }
  void refuse(File& file) const;

  const TransferPlan& plan_;
  Language language_;
  std::vector<File> files_;
};

}  // namespace tavrix
