#include "history/HistoryStore.h"

#include <fmt/format.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <future>
#include <mutex>
#include <thread>
#include <utility>

#include "foundation/StringMap.h"
#include "foundation/files/AtomicFile.h"
#include "foundation/files/FileError.h"
#include "foundation/files/FileSink.h"
#include "history/HistoryIndex.h"

namespace tavrix {
namespace {

using State = HistoryIndexEntry::State;

constexpr std::string_view recordEnding = ".json";
constexpr std::string_view leftOverEnding = ".json.part";

/// The names have a fixed length up to the identifier, so that they sort by time.
std::string recordFileName(const TransferRecord& record) {
  const auto seconds = std::chrono::floor<std::chrono::seconds>(record.startedAt);
  std::string second = iso8601(seconds);
  second.pop_back();
  std::replace(second.begin(), second.end(), ':', '-');
  return fmt::format("{}.{:03}Z-{}{}", second, (record.startedAt - seconds).count(),
                     record.id.text(), recordEnding);
}

/// Returns the run's id from a record's file name; nullopt for any other file.
std::optional<Uuid> recordID(std::string_view name) {
  constexpr std::string_view time = "2026-05-21T08-30-00.250Z-";
  constexpr std::size_t idSize = 36;
  if (name.size() != time.size() + idSize + recordEnding.size()) return std::nullopt;
  if (!name.ends_with(recordEnding) || name[time.size() - 2] != 'Z') return std::nullopt;
  const std::string_view text = name.substr(time.size(), idSize);
  const auto id = Uuid::parse(text);
  return id && id->text() == text ? id : std::nullopt;
}

StringMap<FileStatus> recordFiles(const Folder& folder) {
  StringMap<FileStatus> files;
  folder.visitAll([&](const std::string& path, const FileStatus& status) {
    if (status.type == FileStatus::Type::file && recordID(path)) files.emplace(path, status);
  });
  return files;
}

std::vector<HistoryIndexEntry> savedIndex(const Folder& folder) {
  try {
    const auto file = folder.openFile(HistoryIndex::fileName);
    return HistoryIndex::decode(*file);
  } catch (const FileError&) {
    return {};
  }
}

/// Brings the entries of the folder's index up to date: keeps the valid ones and reads the files
/// that have none.
class IndexUpdate {
 public:
  IndexUpdate(const Folder& folder, Log& log) : folder_(folder), log_(log) {}

  std::vector<HistoryIndexEntry> run() {
    StringMap<FileStatus> files = recordFiles(folder_);
    for (HistoryIndexEntry& entry : savedIndex(folder_)) {
      const auto file = files.find(entry.fileName);
      const bool holds = file != files.end() && file->second.size == entry.size &&
                         file->second.modified == entry.modified;
      if (!holds) {
        hasChanged_ = true;
        continue;
      }
      files.erase(file);
      entries_.push_back(std::move(entry));
    }
    hasChanged_ = hasChanged_ || !files.empty();
    readRecords({files.begin(), files.end()});
    std::sort(entries_.begin(), entries_.end(),
              [](const auto& a, const auto& b) { return a.fileName > b.fileName; });
    for (const HistoryIndexEntry& entry : entries_) tell(entry);
    return std::move(entries_);
  }
  bool hasChanged() const { return hasChanged_; }

 private:
  /// Reads several files at a time: the first list of many runs decodes all of their records.
  void readRecords(const std::vector<std::pair<std::string, FileStatus>>& files) {
    std::atomic<std::size_t> next = 0;
    const auto read = [&] {
      for (std::size_t i = next++; i < files.size(); i = next++) {
        readRecord(files[i].first, files[i].second);
      }
    };
    const std::size_t atOnce = std::max(1U, std::thread::hardware_concurrency());
    std::vector<std::future<void>> others;
    for (std::size_t i = 1; i < std::min(atOnce, files.size()); ++i) {
      others.push_back(std::async(std::launch::async, read));
    }
    read();
    for (std::future<void>& other : others) other.get();
  }
  void readRecord(const std::string& name, const FileStatus& status) {
    HistoryIndexEntry entry{name, status.size, status.modified, State::unreadable, std::nullopt};
    try {
      const auto file = folder_.openFile(name);
      entry.run = summaryOf(TransferRecordCoding::decodeWithoutFolders(*file));
      // A record under another id could never be found again.
      entry.state = entry.run->id == recordID(name) ? State::readable : State::unreadable;
      if (entry.state == State::unreadable) entry.run.reset();
    } catch (const TransferRecord::RecordError& error) {
      if (error.kind() == TransferRecord::RecordError::Kind::newerSchema) {
        entry.state = State::newerSchema;
      }
    } catch (const FileError& error) {
      // It was removed meanwhile or cannot be read at the moment; the index gets no entry.
      const std::lock_guard lock{mutex_};
      if (error.code() != ENOENT) tell(entry);
      return;
    }
    const std::lock_guard lock{mutex_};
    entries_.push_back(std::move(entry));
  }
  void tell(const HistoryIndexEntry& entry) {
    if (entry.state == State::newerSchema) {
      writeLog(log_, "history: a record of a newer schema skipped");
    } else if (entry.state == State::unreadable) {
      writeLog(log_, "history: a record could not be read: {}", PrivateField{entry.fileName});
    }
  }

  const Folder& folder_;
  Log& log_;
  bool hasChanged_ = false;
  std::mutex mutex_;
  std::vector<HistoryIndexEntry> entries_;
};

/// Call this only with the folder locked: it removes the temporary files of other processes.
void saveIndex(Folder& folder, const std::vector<HistoryIndexEntry>& entries) {
  for (const std::string& name : folder.names()) {
    if (name.ends_with(leftOverEnding)) folder.removeFile(name);
  }
  writeFileAtomically(folder, HistoryIndex::fileName, [&](WritableFile& file) {
    FileSink sink{file};
    HistoryIndex::encode(entries, sink);
  });
}

/// Returns the path relative to a folder; nullopt if it is not below the folder.
std::optional<std::string_view> pathBelow(std::string_view folder, std::string_view path) {
  while (folder.size() > 1 && folder.ends_with('/')) folder.remove_suffix(1);
  if (folder == "/") folder = "";
  if (!path.starts_with(folder) || path.size() <= folder.size() + 1) return std::nullopt;
  if (path[folder.size()] != '/') return std::nullopt;
  return path.substr(folder.size() + 1);
}

}  // namespace

RecordSummary summaryOf(const TransferRecord& record) {
  return {record.id,        record.startedAt, record.finishedAt,      record.status,
          record.phoneName, record.phoneHash, record.destinationPath, record.totals};
}

bool HistoryQuery::matches(const RecordSummary& run) const {
  using Filter = TransferRecord::OutcomeFilter;
  if (phone && run.phoneName != *phone && run.phoneHash != phone) return false;
  if (destinationPath && run.destinationPath != *destinationPath) return false;
  switch (outcome) {
    case Filter::all:
      return true;
    case Filter::onMac:
      return run.totals.onMac > 0;
    case Filter::alreadyThere:
      return run.totals.alreadyThere > 0;
    case Filter::failed:
      return run.totals.failed > 0;
    case Filter::optimized:
      return run.totals.optimized > 0;
  }
  return true;
}

void HistoryStore::add(const TransferRecord& record) {
  // A record is worth more than the order of two programs: its file has a name of its own.
  const auto lock = lockedFolder();
  write(recordFileName(record), record);
}

std::vector<RecordSummary> HistoryStore::runs(const HistoryQuery& query) {
  IndexUpdate update{folder_, log_};
  const std::vector<HistoryIndexEntry> entries = update.run();
  if (update.hasChanged()) {
    try {
      if (const auto lock = lockedFolder()) saveIndex(folder_, entries);
    } catch (const FileError& error) {
      writeLog(log_, "history: the index was not saved: {}", PrivateField{error.path()});
    }
  }
  std::vector<RecordSummary> runs;
  for (const HistoryIndexEntry& entry : entries) {
    if (entry.run && query.matches(*entry.run)) runs.push_back(*entry.run);
  }
  return runs;
}

std::optional<TransferRecord> HistoryStore::record(const Uuid& id) const {
  const auto fileName = fileOf(id);
  return fileName ? std::optional{read(*fileName)} : std::nullopt;
}

std::vector<HistoryStore::FileRun> HistoryStore::runsTouching(const std::string& path,
                                                              const HistoryQuery& query) {
  return runsWith(
      query,
      [&](const RecordSummary& run) { return pathBelow(run.destinationPath, path).has_value(); },
      [&](const RecordSummary& run, const TransferRecord::File& file) {
        return file.path && *file.path == pathBelow(run.destinationPath, path);
      });
}

std::vector<HistoryStore::FileRun> HistoryStore::runsOfAsset(const std::string& assetID,
                                                             const HistoryQuery& query) {
  return runsWith(
      query, [](const RecordSummary&) { return true; },
      [&](const RecordSummary&, const TransferRecord::File& file) {
        return file.assetID == assetID;
      });
}

std::vector<HistoryStore::FileRun> HistoryStore::runsWith(
    const HistoryQuery& query, const std::function<bool(const RecordSummary&)>& isCandidate,
    const std::function<bool(const RecordSummary&, const TransferRecord::File&)>& isWanted) {
  std::vector<FileRun> found;
  for (const RecordSummary& run : runs(query)) {
    if (!isCandidate(run)) continue;
    std::optional<TransferRecord> whole;
    try {
      whole = record(run.id);
    } catch (const TransferRecord::RecordError&) {
      writeLog(log_, "history: a record could not be read: {}", PrivateField{run.id.text()});
    }
    if (!whole) continue;
    for (const TransferRecord::Folder& folder : whole->folders) {
      for (const TransferRecord::Shot& shot : folder.shots) {
        if (!tavrix::matches(query.outcome, shot.outcome)) continue;
        for (const TransferRecord::File& file : shot.files) {
          if (isWanted(run, file)) found.push_back({run, file});
        }
      }
    }
  }
  return found;
}

bool HistoryStore::update(const Uuid& id,
                          const std::function<TransferRecord(TransferRecord)>& change) {
  const auto lock = requiredLock();
  const auto fileName = fileOf(id);
  if (!fileName) return false;
  write(*fileName, change(read(*fileName)));
  return true;
}

bool HistoryStore::remove(const Uuid& id) {
  const auto lock = requiredLock();
  const auto fileName = fileOf(id);
  if (!fileName) return false;
  folder_.removeFile(*fileName);
  folder_.syncEntries("");
  return true;
}

std::optional<std::string> HistoryStore::fileOf(const Uuid& id) const {
  for (std::string& name : folder_.names()) {
    if (recordID(name) == id) return std::move(name);
  }
  return std::nullopt;
}

TransferRecord HistoryStore::read(const std::string& fileName) const {
  const auto file = folder_.openFile(fileName);
  return TransferRecordCoding::decode(*file);
}

void HistoryStore::write(const std::string& fileName, const TransferRecord& record) {
  writeFileAtomically(folder_, fileName, [&](WritableFile& file) {
    FileSink sink{file};
    TransferRecordCoding::encode(record, sink);
  });
}

std::unique_ptr<Folder> HistoryStore::lockedFolder() const {
  constexpr int attempts = 500;
  constexpr std::chrono::milliseconds pause{10};
  // The lock belongs to the Folder object that took it, so it ends with this object.
  auto folder = openFolder(folder_.path());
  for (int attempt = 0; attempt < attempts; ++attempt) {
    if (folder->lock()) return folder;
    std::this_thread::sleep_for(pause);
  }
  return nullptr;
}

std::unique_ptr<Folder> HistoryStore::requiredLock() const {
  auto lock = lockedFolder();
  if (lock == nullptr) throw FileError{FileOperation::open, folder_.path(), EBUSY};
  return lock;
}

}  // namespace tavrix
