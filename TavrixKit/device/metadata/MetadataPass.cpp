#include "device/metadata/MetadataPass.h"

#include <absl/container/flat_hash_set.h>

#include <algorithm>
#include <map>
#include <memory>
#include <string_view>
#include <utility>

#include "device/metadata/OddPaths.h"

namespace tavrix {
namespace {

bool isPicture(const SnapshotItem& item) {
  const auto kind = mediaKindOf(item.kind);
  return kind && isPictureKind(*kind);
}

using KeySet = absl::flat_hash_set<std::string_view>;

std::vector<std::string> keysOf(const std::vector<SnapshotItem>& items) {
  std::vector<std::string> keys;
  keys.reserve(items.size());
  for (const SnapshotItem& item : items) keys.push_back(MetadataCache::key(item));
  return keys;
}

/// The keys that more than one item has, so that one record cannot stand for all of them.
class SharedKeys {
 public:
  explicit SharedKeys(const std::vector<SnapshotItem>& items) : keys_(keysOf(items)) {
    KeySet seen;
    seen.reserve(keys_.size());
    for (const std::string& key : keys_) {
      if (!seen.insert(key).second) shared_.insert(key);
    }
  }
  bool contains(std::string_view key) const { return shared_.contains(key); }

 private:
  std::vector<std::string> keys_;
  KeySet shared_;  ///< views into `keys_`
};

/// Returns the indexes of items that agree in key and folder. Names on a disk differ, so only
/// replacements for names that are not UTF-8 can agree.
std::set<std::size_t> twinsOf(const std::vector<SnapshotItem>& items) {
  std::map<std::pair<std::string, std::optional<std::string>>, std::size_t> first;
  std::set<std::size_t> twins;
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (!OddPaths::isReplaced(items[i])) continue;
    const auto [found, isNew] = first.try_emplace({MetadataCache::key(items[i]), items[i].dir}, i);
    if (!isNew) twins.insert({found->second, i});
  }
  return twins;
}

/// Returns true if the records were saved; logs a failure.
bool saveQuietly(const MetadataCache::Records& records, const std::string& phoneKey,
                 const std::string& directory, Log& log) {
  try {
    MetadataCache::save(records, phoneKey, directory);
    return true;
  } catch (const FileError& error) {
    writeLog(log, "metadata cache not saved: path={}, code={}", PrivateField{error.path()},
             error.code());
    return false;
  }
}

void migrateQuietly(const std::string& phoneKey, const std::string& directory, Log& log) {
  try {
    MetadataCache::migrate(phoneKey, directory);
  } catch (const MetadataCache::MigrationError&) {
    writeLog(log, "metadata cache migration: verification failed");
  } catch (const FileError& error) {
    writeLog(log, "metadata cache migration failed: path={}, code={}", PrivateField{error.path()},
             error.code());
  }
}

}  // namespace

void MetadataPass::beginLoading() {
  if (!setup_.directory) return;
  loading_ =
      std::async(std::launch::async, [phoneKey = setup_.phoneKey, directory = *setup_.directory] {
        return MetadataCache::load(phoneKey, directory);
      });
}

void MetadataPass::load() {
  if (!setup_.directory) return;
  records_ =
      loading_.valid() ? loading_.get() : MetadataCache::load(setup_.phoneKey, *setup_.directory);
  if (!MetadataCache::legacyExists(setup_.phoneKey, *setup_.directory)) return;
  writes_.post([phoneKey = setup_.phoneKey, directory = *setup_.directory, &log = log()] {
    migrateQuietly(phoneKey, directory, log);
  });
}

std::vector<std::size_t> MetadataPass::takeHits(std::vector<SnapshotItem>& items) {
  twins_ = twinsOf(items);
  // Built on first use, because it is rarely needed: if no file was moved, the records have the
  // folders of their files.
  std::optional<SharedKeys> shared;
  const auto isShared = [&](const std::string& key) {
    if (!shared) shared.emplace(items);
    return shared->contains(key);
  };
  std::vector<std::size_t> misses;
  for (std::size_t i = 0; i < items.size(); ++i) {
    SnapshotItem& item = items[i];
    if (twins_.contains(i)) {
      misses.push_back(i);
      continue;
    }
    const std::string key = MetadataCache::key(item);
    const auto* found = MetadataCache::find(records_, key, item.dir, true);
    if (found == nullptr && !isShared(key)) {
      found = MetadataCache::find(records_, key, item.dir, false);
    }
    // An outdated record serves until the file is read again, for the pass may be stopped.
    if (found != nullptr) copyMetadata(*found, item);
    if (found == nullptr || MetadataCache::lacksContentID(*found)) misses.push_back(i);
  }
  return misses;
}

void MetadataPass::tell(const Progress& progress) const {
  if (setup_.progress) setup_.progress(progress);
}

bool MetadataPass::forgetGone(const std::vector<SnapshotItem>& items) {
  const std::vector<std::string> keys = keysOf(items);
  const KeySet there{keys.begin(), keys.end()};
  const auto isGone = [&](const auto& entry) {
    return !there.contains(MetadataCache::key(entry.second));
  };
  const auto gone = std::count_if(records_.begin(), records_.end(), isGone);
  if (static_cast<std::size_t>(gone) <= items.size()) return false;
  absl::erase_if(records_, isGone);
  return true;
}

void MetadataPass::saveInBackground() {
  auto copy = std::make_shared<const MetadataCache::Records>(records_);
  writes_.post([this, copy = std::move(copy)] {
    isKept_ = saveQuietly(*copy, setup_.phoneKey, *setup_.directory, log());
  });
  isSaved_ = true;
}

void MetadataPass::remember(const SnapshotItem& item) {
  if (!setup_.directory) {
    isKept_ = false;
    return;
  }
  // An incomplete record would be read again anyway, so it need not be written.
  if (MetadataCache::isIncomplete(item)) return;
  MetadataCache::add(records_, MetadataCache::key(item), MetadataCache::record(item));
  isSaved_ = false;
  const Instant now = setup_.now();
  if (!setup_.checkpoint.isDue(now)) return;
  setup_.checkpoint.lastSavedAt = now;
  saveInBackground();
}

void MetadataPass::fetchOne(SnapshotItem& item, std::size_t index, const Fetch& fetch,
                            Result& result) {
  try {
    if (isPicture(item)) {
      // `fetch` may read the item, so the item is moved from only after it returns.
      const MediaMetadata metadata = fetch(index);
      item = withMetadata(std::move(item), metadata);
    }
    if (!twins_.contains(index)) remember(item);
  } catch (const FileError& error) {
    result.failures.push_back({index, error});
  }
  ++result.progress.read;
  tell(result.progress);
}

MetadataPass::Result MetadataPass::run(std::vector<SnapshotItem>& items, const Fetch& fetch,
                                       const std::stop_token& stop, bool whole) {
  load();
  Result result;
  const auto misses = takeHits(items);
  result.progress = {items.size(), items.size() - misses.size(), 0};
  writeLog(log(), "metadata: cache hits {}, fetching {}", result.progress.hits, misses.size());
  tell(result.progress);
  for (const std::size_t index : misses) {
    if (stop.stop_requested()) {
      result.isComplete = false;
      break;
    }
    fetchOne(items[index], index, fetch, result);
  }
  if (whole && result.isComplete && result.progress.read > 0 && forgetGone(items)) {
    isSaved_ = false;
  }
  if (!isSaved_) saveInBackground();
  writes_.wait();
  result.isKept = isKept_;
  return result;
}

}  // namespace tavrix
