#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "foundation/Log.h"
#include "foundation/files/Folder.h"
#include "history/RunSummary.h"
#include "history/TransferRecordCoding.h"

namespace tavrix {

/// Which runs to list; a run must meet all that is asked.
struct HistoryQuery {
  std::optional<std::string> phone{};  ///< its name, or its hash
  std::optional<std::string> destinationPath{};
  /// Runs with at least one such shot; `all`: every run.
  TransferRecord::OutcomeFilter outcome = TransferRecord::OutcomeFilter::all;

  bool matches(const RunSummary& run) const;
  friend bool operator==(const HistoryQuery&, const HistoryQuery&) = default;
};

/// The records of all runs: one file each in one folder, under names that sort by time. Several
/// processes may use the folder at once, and one store serves one thread. Records are read when
/// they are asked for; lists come from an index that is made again from the files whenever it
/// differs from them. A record that cannot be read is logged and passed over, never changed.
/// Members throw FileError.
class HistoryStore {
 public:
  /// The folder must outlive the store.
  HistoryStore(Folder& folder, Log& log) : folder_(folder), log_(log) {}

  /// Writes the record's file, whole or not at all; an earlier one of the same run is replaced.
  void add(const TransferRecord& record);

  /// Newest first.
  std::vector<RunSummary> runs(const HistoryQuery& query = {});
  /// The record of a run; nothing when there is none. Throws TransferRecord::RecordError when it
  /// cannot be read.
  std::optional<TransferRecord> record(const Uuid& id) const;

  /// A run and what it did with one file.
  struct FileRun {
    RunSummary run;
    TransferRecord::File file;

    friend bool operator==(const FileRun&, const FileRun&) = default;
  };
  /// The runs that wrote or found a file at an absolute path, newest first. Reads every record of
  /// the destinations that hold the path.
  std::vector<FileRun> runsTouching(const std::string& path, const HistoryQuery& query = {});
  /// The runs that an asset was part of, newest first. Reads every record that the query leaves. In
  /// both, the query's outcome is asked of the file's own shot.
  std::vector<FileRun> runsOfAsset(const std::string& assetID, const HistoryQuery& query = {});

  /// Replaces a record by what `change` makes of it, such as one with place names that became known
  /// later. False when there is no such record. Throws TransferRecord::RecordError too.
  bool update(const Uuid& id, const std::function<TransferRecord(TransferRecord)>& change);
  /// False when there is no such record.
  bool remove(const Uuid& id);

 private:
  std::optional<std::string> fileOf(const Uuid& id) const;
  TransferRecord read(const std::string& fileName) const;
  void write(const std::string& fileName, const TransferRecord& record);
  std::vector<FileRun> runsWith(
      const HistoryQuery& query, const std::function<bool(const RunSummary&)>& isCandidate,
      const std::function<bool(const RunSummary&, const TransferRecord::File&)>& isWanted);
  /// The folder held against other processes; null when it could not be had in time.
  std::unique_ptr<Folder> lockedFolder() const;

  Folder& folder_;
  Log& log_;
};

}  // namespace tavrix
