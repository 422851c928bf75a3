#pragma once

#include <cstddef>
#include <functional>
#include <future>
#include <set>
#include <stop_token>
#include <string>
#include <vector>

#include "device/metadata/Checkpoint.h"
#include "device/metadata/MediaMetadata.h"
#include "device/metadata/MetadataCache.h"
#include "foundation/Log.h"
#include "foundation/files/FileError.h"
#include "foundation/tasks/SerialQueue.h"

namespace tavrix {

/// One pass over all files of a phone or folder that collects their metadata, from the cache where
/// possible, else from the files. What was read is saved at intervals during the pass and at its
/// end, also if the pass is stopped.
class MetadataPass {
 public:
  /// The progress of a pass, in files.
  struct Progress {
    std::size_t total = 0;
    std::size_t hits = 0;  ///< taken from the cache
    std::size_t read = 0;  ///< not in the cache, processed so far

    std::size_t done() const { return hits + read; }
    friend bool operator==(const Progress&, const Progress&) = default;
  };
  struct Setup {
    std::string phoneKey;
    std::optional<std::string> directory;  ///< of the cache; if absent, nothing is kept
    std::function<Instant()> now;
    Log* log = nullptr;  ///< nothing is logged if null
    /// Called on the thread of run().
    std::function<void(const Progress&)> progress{};
    Checkpoint checkpoint{};
  };
  /// Reads the metadata of the item at `index`. Throws FileError if the file cannot be read.
  using Fetch = std::function<MediaMetadata(std::size_t index)>;

  struct Failure {
    std::size_t index = 0;
    FileError error;
  };
  struct Result {
    Progress progress;
    std::vector<Failure> failures;  ///< in the order of the items; these items get no new metadata
    bool isComplete = true;         ///< false if the pass was stopped
    bool isKept = true;             ///< everything that was read is in the cache
  };

  explicit MetadataPass(Setup setup) : setup_(std::move(setup)) {}

  /// Starts to load the cache in the background, while the caller lists the files.
  void beginLoading();
  /// Adds metadata to the items. Fetches only pictures and films: other files have no metadata. If
  /// the items are the `whole` source, the cache drops the records of files that are gone as soon
  /// as they outnumber the items. Until then they stay, so that another card in the same place does
  /// not cost this one its records at once.
  Result run(std::vector<SnapshotItem>& items, const Fetch& fetch, const std::stop_token& stop = {},
             bool whole = false);

 private:
  void load();
  /// Adds metadata to the items that the cache has. Returns the indexes of the other items, and of
  /// those with a record of an earlier reader.
  std::vector<std::size_t> takeHits(std::vector<SnapshotItem>& items);
  void fetchOne(SnapshotItem& item, std::size_t index, const Fetch& fetch, Result& result);
  void remember(const SnapshotItem& item);
  /// Drops the records of files that are not among the items, if they outnumber the items. Returns
  /// false if they do not.
  bool forgetGone(const std::vector<SnapshotItem>& items);
  void saveInBackground();
  void tell(const Progress& progress) const;
  Log& log() const { return setup_.log == nullptr ? silentLog() : *setup_.log; }

  Setup setup_;
  std::future<MetadataCache::Records> loading_;
  MetadataCache::Records records_;
  /// The indexes of items that have the same key and folder as another item, so that the cache
  /// cannot tell them apart.
  std::set<std::size_t> twins_;
  bool isSaved_ = true;  ///< everything read is in the file or on its way there
  bool isKept_ = true;   ///< the last save succeeded; owned by the thread of `writes_` until wait()
  SerialQueue writes_;
};

}  // namespace tavrix
