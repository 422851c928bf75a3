#include <absl/container/flat_hash_map.h>
#include <absl/container/flat_hash_set.h>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

#include "media/Snapshot.h"

namespace tavrix {
namespace {

/// Assigns a unique id to each item.
class IDRegister {
 public:
  /// Returns the asset of an item with its natural id, or with the first free suffix if that id is
  /// taken. The asset must outlive the register, which keeps a view of its id.
  MediaAsset assetOf(const SnapshotItem& item, const TimeZone& zone,
                     DatesFromNames names = DatesFromNames::ignored) {
    item.appendAssetID(id_);
    MediaAsset asset = item.mediaAsset(id_, zone, names);
    if (!taken_.insert(entryOf(asset.id())).second) {
      std::uint64_t& number = lastNumbers_.try_emplace(id_, 1).first->second;
      do {
        asset = item.mediaAsset(id_ + "#" + std::to_string(++number), zone, names);
      } while (!taken_.insert(entryOf(asset.id())).second);
    }
    id_.clear();
    return asset;
  }

 private:
  /// Stores the hash of the id, so that ids are not hashed again when the table grows.
  struct Entry {
    std::string_view id;
    std::size_t hash;
    friend bool operator==(const Entry&, const Entry&) = default;
  };
  struct EntryHash {
    std::size_t operator()(const Entry& entry) const { return entry.hash; }
  };
  static Entry entryOf(std::string_view id) { return {id, absl::Hash<std::string_view>{}(id)}; }

  std::string id_;
  absl::flat_hash_set<Entry, EntryHash> taken_;
  /// The last number appended to an id; the lower numbers remain taken.
  absl::flat_hash_map<std::string, std::uint64_t> lastNumbers_;
};

/// Builds assets on a thread of its own while the file is still being read. Reading and building
/// take about the same time.
class AssetBuilder {
 public:
  explicit AssetBuilder(const TimeZone& zone) : zone_(zone), thread_([this] { work(); }) {}
  ~AssetBuilder() { close(); }
  AssetBuilder(const AssetBuilder&) = delete;
  AssetBuilder& operator=(const AssetBuilder&) = delete;

  void add(SnapshotItem&& item) {
    block_.push_back(std::move(item));
    if (block_.size() == blockItems) handOver();
  }

  /// Returns the assets of all added items, in the order of the items.
  std::vector<MediaAsset> finish() {
    if (!block_.empty()) handOver();
    close();
    thread_.join();
    if (failure_) std::rethrow_exception(failure_);
    assets_.shrink_to_fit();
    return std::move(assets_);
  }

 private:
  using Block = std::vector<SnapshotItem>;
  static constexpr std::size_t blockItems = 512;
  static constexpr std::size_t maxBlocks = 8;

  void handOver() {
    std::unique_lock lock{mutex_};
    changed_.wait(lock, [this] { return blocks_.size() < maxBlocks; });
    blocks_.push_back(std::move(block_));
    changed_.notify_all();
    block_ = {};
    block_.reserve(blockItems);
  }

  void close() {
    const std::lock_guard lock{mutex_};
    isClosed_ = true;
    changed_.notify_all();
  }

  /// Waits for the next block. Returns an empty one if no block will follow.
  Block take() {
    std::unique_lock lock{mutex_};
    changed_.wait(lock, [this] { return isClosed_ || !blocks_.empty(); });
    if (blocks_.empty()) return {};
    Block block = std::move(blocks_.front());
    blocks_.pop_front();
    changed_.notify_all();
    return block;
  }

  void work() {
    for (Block block = take(); !block.empty(); block = take()) {
      // After a failure the remaining blocks are discarded, so that the reader never waits forever.
      if (failure_) continue;
      try {
        for (const SnapshotItem& item : block) assets_.push_back(ids_.assetOf(item, zone_));
      } catch (...) {
        failure_ = std::current_exception();
      }
    }
  }

  TimeZone zone_;
  Block block_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<Block> blocks_;
  bool isClosed_ = false;

  // Used only by the thread until it is joined.
  IDRegister ids_;
  std::vector<MediaAsset> assets_;
  std::exception_ptr failure_;
  std::jthread thread_;
};

}  // namespace

std::vector<MediaAsset> Snapshot::assetsOf(const std::vector<SnapshotItem>& items,
                                           const TimeZone& zone, DatesFromNames names) {
  IDRegister ids;
  std::vector<MediaAsset> assets;
  assets.reserve(items.size());
  for (const SnapshotItem& item : items) assets.push_back(ids.assetOf(item, zone, names));
  return assets;
}

std::vector<MediaAsset> Snapshot::readAssets(ByteReader& source, const TimeZone& zone) {
  AssetBuilder builder{zone};
  readEach(source, [&](SnapshotItem&& item) { builder.add(std::move(item)); });
  return builder.finish();
}

}  // namespace tavrix
