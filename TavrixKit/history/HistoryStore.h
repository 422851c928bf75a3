#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "foundation/Log.h"
#include "foundation/files/Folder.h"
#include "history/RecordSummary.h"
#include "history/TransferRecordCoding.h"

namespace tavrix {

/// Selects the runs to list; a run must meet all conditions.
struct HistoryQuery {
  std::optional<std::string> phone{};  ///< its name, or its hash
  std::optional<std::string> destinationPath{};
  /// Runs with at least one such shot; `all` selects every run.
  TransferRecord::OutcomeFilter outcome = TransferRecord::OutcomeFilter::all;

  bool matches(const RecordSummary& run) const;
  friend bool operator==(const HistoryQuery&, const HistoryQuery&) = default;
};

/// The records of all runs: one file each in one folder, with names that sort by time. Several
/// processes may use the folder at once; a store must be used by one thread. Records are read on
/// demand; lists come from an index that is rebuilt from the files whenever it differs from them. A
/// record that cannot be read is logged and skipped, never changed. Members throw FileError.
class HistoryStore {
 public:
  /// `folder` must outlive the store.
  HistoryStore(Folder& folder, Log& log) : folder_(folder), log_(log) {}

  /// Writes the record's file atomically. Replaces an earlier record of the same run.
  void add(const TransferRecord& record);

  /// Returns the selected runs, newest first.
  std::vector<RecordSummary> runs(const HistoryQuery& query = {});
  /// Returns the record of a run, or nullopt if there is none. Throws TransferRecord::RecordError
  /// if it cannot be read.
  std::optional<TransferRecord> record(const Uuid& id) const;

  /// A run and its result for one file.
  struct FileRun {
    RecordSummary run;
    TransferRecord::File file;

    friend bool operator==(const FileRun&, const FileRun&) = default;
  };
  /// Returns the runs that wrote or found the file at an absolute path, newest first. Reads every
  /// record of the destinations that contain the path.
  std::vector<FileRun> runsTouching(const std::string& path, const HistoryQuery& query = {});
  /// Returns the runs that included the asset, newest first. Reads every record that the query
  /// selects. In runsTouching() and runsOfAsset(), the shot of the file must also have the query's
  /// outcome.
  std::vector<FileRun> runsOfAsset(const std::string& assetID, const HistoryQuery& query = {});

  /// Replaces a record by the result of `change`, for example to add place names that became known
  /// later. Returns false if there is no such record. Also throws TransferRecord::RecordError. As
  /// remove(), throws if another process keeps the folder locked for five seconds.
  bool update(const Uuid& id, const std::function<TransferRecord(TransferRecord)>& change);
  /// Returns false if there is no such record.
  bool remove(const Uuid& id);

 private:
  std::optional<std::string> fileOf(const Uuid& id) const;
  TransferRecord read(const std::string& fileName) const;
  void write(const std::string& fileName, const TransferRecord& record);
  std::vector<FileRun> runsWith(
      const HistoryQuery& query, const std::function<bool(const RecordSummary&)>& isCandidate,
      const std::function<bool(const RecordSummary&, const TransferRecord::File&)>& isWanted);
  /// Returns the folder, locked against other processes; nullptr if the lock was not available in
  /// time.
  std::unique_ptr<Folder> lockedFolder() const;
  /// As lockedFolder(), but throws FileError instead.
  std::unique_ptr<Folder> requiredLock() const;

  Folder& folder_;
  Log& log_;
};

}  // namespace tavrix
