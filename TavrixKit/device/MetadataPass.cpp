#include "device/MetadataPass.h"

#include <memory>

namespace tavrix {
namespace {

bool isPicture(const SnapshotItem& item) {
  const auto kind = mediaKindOf(item.kind);
  return kind && isPictureKind(*kind);
}

/// Keys that more than one item has, so that one record cannot speak for all of them.
StringSet sharedKeys(const std::vector<std::string>& keys) {
  StringSet seen;
  StringSet shared;
  seen.reserve(keys.size());
  for (const std::string& key : keys) {
    if (!seen.insert(key).second) shared.insert(key);
  }
  return shared;
}

/// Whether it could be saved.
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

void MetadataPass::load() {
  if (!setup_.directory) return;
  records_ = MetadataCache::load(setup_.phoneKey, *setup_.directory);
  if (!MetadataCache::legacyExists(setup_.phoneKey, *setup_.directory)) return;
  writes_.post([phoneKey = setup_.phoneKey, directory = *setup_.directory, &log = log()] {
    migrateQuietly(phoneKey, directory, log);
  });
}

std::vector<std::size_t> MetadataPass::takeHits(std::vector<SnapshotItem>& items) const {
  std::vector<std::string> keys;
  keys.reserve(items.size());
  for (const SnapshotItem& item : items) keys.push_back(MetadataCache::key(item));
  const StringSet shared = sharedKeys(keys);
  std::vector<std::size_t> misses;
  for (std::size_t i = 0; i < items.size(); ++i) {
    const auto found = records_.find(keys[i]);
    const bool isHit =
        found != records_.end() && (!shared.contains(keys[i]) || found->second.dir == items[i].dir);
    if (isHit) {
      items[i] = withMetadata(std::move(items[i]), metadataOf(found->second));
    } else {
      misses.push_back(i);
    }
  }
  return misses;
}

void MetadataPass::tell(const Progress& progress) const {
  if (setup_.progress) setup_.progress(progress);
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
  // It would be read again anyway, and needs no writing.
  if (MetadataCache::isIncomplete(item)) return;
  records_.insert_or_assign(MetadataCache::key(item), item);
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
      // Whoever fetches may look at the item: it is whole until that is done.
      const MediaMetadata metadata = fetch(index);
      item = withMetadata(std::move(item), metadata);
    }
    remember(item);
  } catch (const FileError& error) {
    result.failures.push_back({index, error});
  }
  ++result.progress.read;
  tell(result.progress);
}

MetadataPass::Result MetadataPass::run(std::vector<SnapshotItem>& items, const Fetch& fetch,
                                       const std::stop_token& stop) {
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
  if (!isSaved_) saveInBackground();
  writes_.wait();
  result.isKept = isKept_;
  return result;
}

}  // namespace tavrix
