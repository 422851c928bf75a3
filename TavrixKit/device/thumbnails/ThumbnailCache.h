#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "device/thumbnails/ThumbnailEntry.h"
#include "foundation/files/Folder.h"

namespace tavrix {

/// Thumbnails on the disk, one file each; docs/thumbnails.md describes the folder. A cache is never
/// a source of truth: a damaged entry is treated as absent, and a folder that cannot be written
/// keeps nothing. No member throws. Safe to use from several threads, and for several processes on
/// one folder. Every member reads or writes the disk, so none is for the main loop.
class ThumbnailCache {
 public:
  struct Setup {
    std::string folder;          ///< created with the first entry
    std::string programVersion;  ///< a file that one version cannot show is tried by the next
    std::function<Instant()> now;
    std::uint64_t maxBytes = 200'000'000;
  };
  explicit ThumbnailCache(Setup setup) : setup_(std::move(setup)) {}

  std::optional<ThumbnailEntry> find(const ThumbnailKey& key);
  /// Replaces the entry of the key. find() of any process then returns the old or the new one.
  void keep(const ThumbnailKey& key, const ThumbnailEntry& entry);
  /// If the folder may have grown above its limit, measures it and removes the entries whose last
  /// use is oldest until 90 % of the limit remain. Must be called from time to time after keep();
  /// usually returns immediately, and may take a second.
  void trim();

  struct Contents {
    std::uint64_t files = 0;
    std::uint64_t bytes = 0;

    friend bool operator==(const Contents&, const Contents&) = default;
  };
  /// Returns the entries in a folder; none if it does not exist or cannot be read.
  static Contents contents(const std::string& folder);

  struct Removal {
    std::uint64_t removed = 0;  ///< files
    std::uint64_t failed = 0;

    friend bool operator==(const Removal&, const Removal&) = default;
  };
  /// Removes all entries of a folder, and nothing else that is in it.
  static Removal reset(const std::string& folder);

  /// Returns the folder of the user's thumbnails according to the XDG base directory rules, from
  /// the values of XDG_CACHE_HOME and HOME: values that are not absolute are ignored. Returns
  /// nullopt if neither remains.
  static std::optional<std::string> userFolder(const std::optional<std::string>& cacheHome,
                                               const std::optional<std::string>& home);

 private:
  std::shared_ptr<Folder> openFolderIfAny();
  std::shared_ptr<Folder> openOrMakeFolder();
  void write(const std::string& name, const std::string& bytes);

  Setup setup_;
  std::mutex mutex_;  ///< of folder_
  std::shared_ptr<Folder> folder_;
  std::mutex trimming_;
  std::atomic<std::uint64_t> addedBytes_ = 0;
  std::atomic<bool> isMeasured_ = false;
};

}  // namespace tavrix
