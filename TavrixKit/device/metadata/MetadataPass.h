#pragma once

#include <cstddef>
#include <functional>
#include <future>
#include <set>
#include <stop_token>
#include <string>
#include <vector>

#include "device/Checkpoint.h"
#include "device/MediaMetadata.h"
#include "device/MetadataCache.h"
#include "device/SerialQueue.h"
#include "foundation/Log.h"
#include "foundation/files/FileError.h"

namespace tavrix {

/// One reading of the metadata of all files of a phone or folder: from the cache what it has, from
/// the files the rest. What was read is saved every now and then while the pass goes on, and at its
/// end, also when it is stopped.
class MetadataPass {
 public:
  /// How far a pass is, in files.
  struct Progress {
    std::size_t total = 0;
    std::size_t hits = 0;  ///< taken from the cache
    std::size_t read = 0;  ///< looked at since

    std::size_t done() const { return hits + read; }
    friend bool operator==(const Progress&, const Progress&) = default;
  };
  struct Setup {
    std::string phoneKey;
    std::optional<std::string> directory;  ///< of the cache; without one, nothing is kept
    std::function<Instant()> now;
    Log* log = nullptr;  ///< silent without one
    /// Told from the thread of run().
    std::function<void(const Progress&)> progress{};
    Checkpoint checkpoint{};
  };
  /// Reads the metadata of the item at an index. Throws FileError when the file cannot be read.
  using Fetch = std::function<MediaMetadata(std::size_t index)>;

  struct Failure {
    std::size_t index = 0;
    FileError error;
  };
  struct Result {
    Progress progress;
    std::vector<Failure> failures;  ///< in the order of the items, which keep no metadata
    bool isComplete = true;         ///< false when it was stopped
    bool isKept = true;             ///< all that was read lies in the cache
  };

  explicit MetadataPass(Setup setup) : setup_(std::move(setup)) {}

  /// Begins to load the cache, for a caller who lists the files meanwhile.
  void beginLoading();
  /// Completes the items. Only pictures and films are fetched: other files have no metadata. Where
  /// the items are the `whole` source, the cache forgets files that are gone when they outnumber
  /// those that are there: another card in the same place shall not cost this one its records at
  /// once.
  Result run(std::vector<SnapshotItem>& items, const Fetch& fetch, const std::stop_token& stop = {},
             bool whole = false);

 private:
  void load();
  /// The indexes of the items that the cache does not know; the others are completed.
  std::vector<std::size_t> takeHits(std::vector<SnapshotItem>& items);
  void fetchOne(SnapshotItem& item, std::size_t index, const Fetch& fetch, Result& result);
  void remember(const SnapshotItem& item);
  /// Drops the records of files that are not among the items, when they are the more; false when
  /// they are not.
  bool forgetGone(const std::vector<SnapshotItem>& items);
  void saveInBackground();
  void tell(const Progress& progress) const;
  Log& log() const { return setup_.log == nullptr ? silentLog() : *setup_.log; }

  Setup setup_;
  std::future<MetadataCache::Records> loading_;
  MetadataCache::Records records_;
  /// The indexes of items that agree with another in all that a record is known by, so that the
  /// cache cannot tell which of them it speaks of.
  std::set<std::size_t> twins_;
  bool isSaved_ = true;  ///< what was read is in the file, or on its way there
  bool isKept_ = true;   ///< the last save succeeded; of the queue's thread until it is waited for
  SerialQueue writes_;
};

}  // namespace tavrix
