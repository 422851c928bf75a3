#include "device/metadata/MetadataPass.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <cerrno>

#include "foundation/tests/support/RecordingLog.h"
#include "foundation/tests/support/TemporaryFolder.h"

namespace tavrix {
namespace {

SnapshotItem item(const std::string& directory, const std::string& name, double date) {
  SnapshotItem item;
  item.name = name;
  item.dir = directory;
  item.kind = textOf(mediaKindOfFileName(name));
  item.size = 10;
  item.itemDate = date;
  return item;
}

/// A phone with items, and a clock that advances by `step` with each file that is read.
struct MetadataPassTest : testing::Test {
  MetadataPass::Result run(std::stop_token stop = {}) {
    MetadataPass pass{{.phoneKey = "P",
                       .directory = folder / "state",
                       .now = [&] { return time; },
                       .log = &log,
                       .progress = [&](const auto& progress) { told.push_back(progress); }}};
    completed = items;
    fetched.clear();
    told.clear();
    const auto fetch = [&](std::size_t index) {
      fetched.push_back(index);
      time += step;
      if (atFetch) atFetch(index);
      MediaMetadata metadata;
      if (hasPixels) metadata.setPixels(100 + index, 50);
      metadata.contentID = contentID;
      return metadata;
    };
    return pass.run(completed, fetch, std::move(stop), isWhole);
  }
  std::uint64_t cached() const { return MetadataCache::countCachedRecords(folder / "state"); }

  TemporaryFolder folder;
  RecordingLog log{true};
  Instant time{std::chrono::seconds{1779364800}};
  std::chrono::seconds step{0};
  bool hasPixels = true;
  bool isWhole = false;
  std::optional<std::string> contentID;
  std::vector<SnapshotItem> items{item("1", "a.HEIC", 1), item("1", "a.AAE", 1),
                                  item("1", "b.MOV", 2), item("2", "c.JPG", 3)};
  std::vector<SnapshotItem> completed;
  std::vector<std::size_t> fetched;
  std::vector<MetadataPass::Progress> told;
  std::function<void(std::size_t)> atFetch;
};

TEST_F(MetadataPassTest, secondPass_fetchesOnlyWhatIsNew) {
  using testing::ElementsAre;
  run();
  EXPECT_THAT(fetched, ElementsAre(0, 2, 3));
  const auto first = completed;
  EXPECT_EQ(first[2].px, 102);
  EXPECT_EQ(told.front(), (MetadataPass::Progress{4, 0, 0}));
  EXPECT_EQ(told.back(), (MetadataPass::Progress{4, 0, 4}));

  EXPECT_EQ(run().progress, (MetadataPass::Progress{4, 4, 0}));
  EXPECT_THAT(fetched, ElementsAre());
  EXPECT_EQ(completed, first);

  items.push_back(item("1", "a.HEIC", 1.5));  // another date makes it another file
  items[2].size = 11;
  run();
  EXPECT_THAT(fetched, ElementsAre(2, 4));
  EXPECT_THAT(log.lines(), ElementsAre("metadata: cache hits 0, fetching 4",
                                       "metadata: cache hits 4, fetching 0",
                                       "metadata: cache hits 3, fetching 2"));
}

TEST_F(MetadataPassTest, recordAtZeroZero_hasNoPosition) {
  items = {item("1", "a.HEIC", 1), item("1", "b.HEIC", 1)};
  MetadataCache::Records records;
  for (const SnapshotItem& each : items) {
    SnapshotItem kept = each;
    kept.px = 100;
    kept.lat = 0;
    kept.lon = kept.name == "a.HEIC" ? 0 : 5;
    MetadataCache::add(records, MetadataCache::key(kept), kept);
  }
  MetadataCache::save(records, "P", folder / "state");
  run();
  EXPECT_THAT(fetched, testing::ElementsAre());
  EXPECT_FALSE(completed[0].lat || completed[0].lon);
  EXPECT_EQ(completed[1].lon, 5);
}

TEST_F(MetadataPassTest, recordThatLacksTheContentIdentifier_isReadAgainOnce) {
  MetadataCache::Records records;
  for (const SnapshotItem& each : items) {
    SnapshotItem kept = each;
    kept.px = 7;
    kept.cam = kept.name == "a.HEIC";
    MetadataCache::add(records, MetadataCache::key(kept), kept);
  }
  MetadataCache::save(records, "P", folder / "state");
  std::stop_source stopped;
  stopped.request_stop();
  run(stopped.get_token());
  EXPECT_EQ(completed[0].px, 7) << "the record serves while the file was not read";
  contentID = "X";
  run();
  EXPECT_THAT(fetched, testing::ElementsAre(0, 2));
  EXPECT_EQ(completed[2].contentID, "X");
  contentID.reset();
  items[2].size = 11;
  for (const std::size_t reads : {1U, 0U}) {
    run();
    EXPECT_EQ(fetched.size(), reads) << "a file without an identifier is read once, too";
    EXPECT_EQ(completed[0].contentID, "X");
    EXPECT_EQ(completed[2].contentID, std::nullopt);
  }
}

TEST_F(MetadataPassTest, filesOfOneKey_neverTakeEachOthersMetadata) {
  items = {item("1", "a.JPG", 1), item("2", "a.JPG", 1), item("3", "a.JPG", 1)};
  for (const std::size_t reads : {3U, 0U}) {
    run();
    for (std::size_t at = 0; at < items.size(); ++at) {
      EXPECT_EQ(completed[at].px, static_cast<std::int64_t>(100 + at));
    }
    EXPECT_EQ(fetched.size(), reads);
  }
  // One more copy is read; the others stay known.
  items.insert(items.begin(), item("0", "a.JPG", 1));
  run();
  EXPECT_THAT(fetched, testing::ElementsAre(0));
  // The last copy, moved elsewhere, is still the same file.
  items = {item("9", "a.JPG", 1)};
  run();
  EXPECT_THAT(fetched, testing::ElementsAre());
}

TEST_F(MetadataPassTest, filesThatNothingTellsApart_areReadEachTime) {
  const std::string shown = "\xEF\xBF\xBD.JPG";
  items = {item("1", shown, 1), item("1", shown, 1), item("2", shown, 1)};
  for (const std::size_t reads : {3U, 2U}) {
    run();
    for (std::size_t at = 0; at < items.size(); ++at) {
      EXPECT_EQ(completed[at].px, static_cast<std::int64_t>(100 + at));
    }
    EXPECT_EQ(fetched.size(), reads);
    EXPECT_EQ(cached(), 1U);
  }
}

TEST_F(MetadataPassTest, recordsOfFilesThatAreGone_leaveWhenTheyAreTheMore) {
  isWhole = true;
  run();
  const auto all = items;
  items = {all[0], all[1], all[2], item("1", "new1.JPG", 1)};
  run();
  EXPECT_EQ(cached(), 5U);
  items = {all[0], item("1", "new2.JPG", 1)};
  isWhole = false;
  run();
  EXPECT_EQ(cached(), 6U);
  isWhole = true;
  run();
  EXPECT_EQ(cached(), 6U) << "nothing was read, so nothing is written";
  items = {all[0], item("1", "new3.JPG", 1)};
  run();
  EXPECT_EQ(cached(), 2U);
  run();
  EXPECT_THAT(fetched, testing::ElementsAre());
}

TEST_F(MetadataPassTest, picturesThatTellNoSize_areNoReasonToWriteTheCache) {
  run();
  items.push_back(item("1", "d.JPG", 5));
  hasPixels = false;
  std::filesystem::remove(folder / "state/metadata-P.jsonl");
  items = {items.back()};
  run();
  EXPECT_THAT(fetched, testing::ElementsAre(0));
  EXPECT_FALSE(folder.has("state/metadata-P.jsonl"));
}

TEST_F(MetadataPassTest, passThatIsStopped_keepsWhatItRead) {
  std::stop_source stop;
  atFetch = [&](std::size_t index) {
    if (index == 2) stop.request_stop();
  };
  const auto result = run(stop.get_token());
  EXPECT_FALSE(result.isComplete);
  EXPECT_EQ(result.progress.done(), 3U);
  atFetch = {};
  EXPECT_TRUE(run().isComplete);
  EXPECT_THAT(fetched, testing::ElementsAre(3));
}

TEST_F(MetadataPassTest, longPass_savesEveryTwentySeconds) {
  items.clear();
  for (int i = 0; i < 60; ++i) items.push_back(item("1", fmt::format("{}.JPG", i), i));
  step = std::chrono::seconds{1};
  std::vector<std::uint64_t> seen;
  atFetch = [&](std::size_t index) {
    // After a crash here, the cache must have what was read 20 seconds ago. Writing takes a moment.
    if (index % 20 != 10 || index < 20) return;
    const std::uint64_t least = index - 20;
    for (int wait = 0; wait < 500 && cached() < least; ++wait) {
      std::this_thread::sleep_for(std::chrono::milliseconds{10});
    }
    seen.push_back(cached());
    EXPECT_GE(seen.back(), least);
    EXPECT_LE(seen.back(), index);
  };
  run();
  EXPECT_EQ(seen.size(), 2U);
  EXPECT_EQ(cached(), 60U);
}

TEST_F(MetadataPassTest, fileThatFails_isToldAndReadAgain) {
  atFetch = [](std::size_t index) {
    if (index == 2) throw FileError{FileOperation::read, "b.MOV", EIO};
  };
  const auto result = run();
  ASSERT_EQ(result.failures.size(), 1U);
  EXPECT_EQ(result.failures[0].index, 2U);
  EXPECT_EQ(completed[2], items[2]);
  EXPECT_TRUE(result.isComplete);
  atFetch = {};
  run();
  EXPECT_THAT(fetched, testing::ElementsAre(2));
}

TEST_F(MetadataPassTest, stateFolderThatCannotBeWritten_costsTheCacheAlone) {
  folder.write("state", "a file");
  const auto result = run();
  EXPECT_TRUE(result.isComplete);
  EXPECT_FALSE(result.isKept);
  EXPECT_EQ(completed[3].px, 103);
  EXPECT_THAT(log.lines(), testing::Contains(testing::HasSubstr("metadata cache not saved")));
}

TEST_F(MetadataPassTest, passWithoutACache_saysThatNothingIsKept) {
  const auto withoutCache = [&](std::vector<SnapshotItem> all) {
    MetadataPass pass{{.phoneKey = "P", .directory = std::nullopt, .now = [&] { return time; }}};
    return pass.run(all, [](std::size_t) { return MediaMetadata{}; }).isKept;
  };
  EXPECT_FALSE(withoutCache(items));
  EXPECT_TRUE(withoutCache({})) << "nothing was read";
  EXPECT_TRUE(run().isKept);
}

TEST_F(MetadataPassTest, legacyRecords_areHitsAndBecomeLines) {
  folder.write(
      "state/metadata-P.json",
      R"({"records":{"x":{"name":"c.JPG","kind":"photo","size":10,"itemDate":3,"px":7}}})");
  run();
  EXPECT_EQ(completed[3].px, 7);
  EXPECT_FALSE(folder.has("state/metadata-P.json"));
  EXPECT_EQ(cached(), 4U);
}

}  // namespace
}  // namespace tavrix
