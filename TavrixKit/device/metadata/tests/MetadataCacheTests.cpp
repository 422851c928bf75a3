#include "device/metadata/MetadataCache.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <atomic>

#include "device/metadata/Checkpoint.h"
#include "foundation/files/FileError.h"
#include "foundation/files/Folder.h"
#include "foundation/json/TextReader.h"
#include "foundation/tasks/SerialQueue.h"
#include "foundation/tests/support/TemporaryFolder.h"

namespace tavrix {
namespace {

using testing::Key;
using testing::UnorderedElementsAre;

constexpr const char* photoLine =
    R"({"kind":"photo","name":"IMG_0001.HEIC","px":4032,"py":3024,"size":1234})";
constexpr const char* sidecarLine = R"({"kind":"sidecar","name":"IMG_0001.AAE","size":7})";

SnapshotItem photo(const std::string& name, std::uint64_t size, std::optional<double> date) {
  SnapshotItem item;
  item.name = name;
  item.kind = "photo";
  item.size = size;
  item.itemDate = date;
  item.px = 4032;
  item.py = 3024;
  return item;
}

MetadataCache::Records recordsOf(const std::vector<SnapshotItem>& items) {
  MetadataCache::Records records;
  for (const SnapshotItem& item : items) records[MetadataCache::key(item)] = item;
  return records;
}

/// A state folder with the cache of the phone "P".
struct MetadataCacheTest : testing::Test {
  MetadataCache::Records load() const { return MetadataCache::load("P", state); }
  void writeLegacy(const std::string& records) const {
    folder.write("state/metadata-P.json", R"({"records":{)" + records + "}}");
  }

  TemporaryFolder folder;
  std::string state = folder / "state";
};

TEST_F(MetadataCacheTest, key_isNameSizeAndDateInShortestForm) {
  const std::vector<std::pair<std::optional<double>, std::string>> rows{
      {std::nullopt, "0.0"},           {0.0, "0.0"},
      {1779364800, "1779364800.0"},    {1779364800.25, "1779364800.25"},
      {1e9, "1000000000.0"},           {-1.5, "-1.5"},
      {1e9 + 0.001, "1000000000.001"}, {1e17, "1e+17"}};
  for (const auto& [date, text] : rows) {
    EXPECT_EQ(MetadataCache::key("a|b.HEIC", 1234, date), "a|b.HEIC|1234|" + text);
  }
  EXPECT_EQ(MetadataCache::phoneKey("00008030-00A/4"), "00008030-00A-4");
  EXPECT_EQ(MetadataCache::phoneKey(std::nullopt), "unknown");
  EXPECT_EQ(MetadataCache::phoneKey(""), "unknown");
}

TEST_F(MetadataCacheTest, whatWasSaved_isLoadedEqual) {
  std::vector<SnapshotItem> items;
  for (int i = 0; i < 1000; ++i) items.push_back(photo(fmt::format("IMG_{:04}.HEIC", i), 10, i));
  // The same name and size with another date is another file.
  items.push_back(photo("IMG_0001.HEIC", 10, 1.5));
  items.back().exifDate = "2026:05:20 12:00:00";
  items.back().lat = 41.123456789012345;
  items.back().cam = false;
  const auto records = recordsOf(items);
  ASSERT_EQ(records.size(), 1001U);
  MetadataCache::save(records, "P", state);
  EXPECT_EQ(load(), records);
  EXPECT_EQ(MetadataCache::countCachedRecords(state), 1001U);
  const std::string bytes = folder.read("state/metadata-P.jsonl");
  MetadataCache::save(load(), "P", state);
  EXPECT_EQ(folder.read("state/metadata-P.jsonl"), bytes);
  EXPECT_THAT(openFolder(state)->names(), testing::ElementsAre("metadata-P.jsonl"));
}

TEST_F(MetadataCacheTest, lineThatIsDamaged_costsItsRecordAlone) {
  const std::string good = fmt::format("{}\n{}\n", photoLine, sidecarLine);
  for (const std::string& bad :
       {std::string{"{\"kind\":\"photo\",\"na"}, std::string{"[]"}, std::string{"null"},
        std::string{"{}"}, std::string{"\xFF\xFE"}, std::string(100'000, '['),
        fmt::format("{0},{0}", sidecarLine), std::string(100'000, 'x'), std::string{},
        std::string{R"({"kind":"photo","name":"old","size":1})"},
        std::string{R"({"kind":"video","name":"old","size":1,"px":null})"},
        std::string{R"({"kind":"photo","name":"x","size":-1,"px":1})"}}) {
    for (const std::string& text : {bad + '\n' + good, good + bad + '\n', good + bad,
                                    fmt::format("{}\n{}\n{}", photoLine, bad, sidecarLine)}) {
      folder.write("state/metadata-P.jsonl", text);
      EXPECT_THAT(load(),
                  UnorderedElementsAre(Key("IMG_0001.HEIC|1234|0.0"), Key("IMG_0001.AAE|7|0.0")))
          << text.substr(0, 200);
    }
  }
}

TEST_F(MetadataCacheTest, lineAsItIsWritten_isReadAsTheJsonReaderReadsIt) {
  const auto load = [](const std::string& line) {
    TextReader reader{line};
    return readJsonLines(reader);
  };
  for (const char* const fields :
       {R"("cam":false,"dir":"100 Фото","exifDate":"2026:05:20 12:00:00","exifOffset":"+03:00",)"
        R"("itemDate":1779267600.123,"kind":"photo","lat":-41.5,"lon":1e-7,"name":"a b",)"
        R"("px":0,"py":9007199254740993,"size":18446744073709551615)",
        R"("cam":true,"contentID":"2C5B","dir":"1","kind":"other","name":"a","size":1)",
        R"("contentID":null,"kind":"other","name":"a","size":1)",
        R"("contentID":1,"kind":"other","name":"a","size":1)",
        R"("itemDate":-0,"kind":"other","name":"a","size":1)",
        R"("itemDate":-0.0,"kind":"other","name":"a","size":1)",
        R"("itemDate":-1.5E+3,"kind":"other","name":"a","size":0)",
        R"("itemDate":1.,"kind":"other","name":"a","size":1)",
        R"("itemDate":1e400,"kind":"other","name":"a","size":1)",
        R"("itemDate":1e-400,"kind":"other","name":"a","size":1)",
        R"("itemDate":.5,"kind":"other","name":"a","size":1)",
        R"("itemDate":nan,"kind":"other","name":"a","size":1)",
        R"("itemDate":1.e5,"kind":"other","name":"a","size":1)",
        R"("itemDate":01,"kind":"other","name":"a","size":1)",
        R"("itemDate":null,"kind":"other","name":"a","size":1)",
        R"("kind":"other","lat":"1","name":"a","size":1)",
        R"("kind":"other","name":"a","size":01)",
        R"("kind":"other","name":"a","size":1.0)",
        R"("kind":"other","name":"a","size":1e3)",
        R"("kind":"other","name":"a","size":18446744073709551616)",
        R"("kind":"other","name":"a\u0041\"","size":1)",
        "\"kind\":\"other\",\"name\":\"\xff\",\"size\":1",
        "\"kind\":\"other\",\"name\":\"\t\",\"size\":1",
        R"("kind":"other","name":"a","px":-1,"size":1)",
        R"("kind":"other","name":"a","size":1,"size":2)",
        R"("kind":"other","name":"a","size":1},{)",
        R"("kind":"other","name":"a","new":[{}],"size":1)",
        R"("name":"a","size":1)"}) {
    EXPECT_EQ(load(fmt::format("{{{}}}", fields)), load(fmt::format("{{ {}}}", fields))) << fields;
  }
}

TEST_F(MetadataCacheTest, laterLine_replacesAnEarlierOneOfItsKey) {
  const std::string other = R"({"kind":"photo","name":"IMG_0001.HEIC","px":1,"size":1234})";
  folder.write("state/metadata-P.jsonl", fmt::format("{}\n{}\n", other, photoLine));
  EXPECT_EQ(load().at("IMG_0001.HEIC|1234|0.0").px, 4032);
}

TEST_F(MetadataCacheTest, recordsOfOneKey_areKnownByTheirFolders) {
  const auto inFolder = [](const char* dir, std::int64_t px) {
    SnapshotItem item = photo("a.JPG", 10, 1);
    item.dir = dir;
    item.px = px;
    return item;
  };
  MetadataCache::Records records;
  for (const auto& item :
       {inFolder("3", 3), inFolder("1", 1), inFolder("2", 2), inFolder("1", 4)}) {
    MetadataCache::add(records, MetadataCache::key(item), item);
  }
  const std::string key = MetadataCache::key(inFolder("", 0));
  std::string bytes;
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(records.size(), 3U);
    for (const auto& [dir, px] : {std::pair{"1", 4}, {"2", 2}, {"3", 3}}) {
      EXPECT_EQ(MetadataCache::find(records, key, dir, true)->px, px) << dir;
    }
    EXPECT_EQ(MetadataCache::find(records, key, "4", true), nullptr);
    EXPECT_NE(MetadataCache::find(records, key, "4", false), nullptr);
    MetadataCache::save(records, "P", state);
    EXPECT_EQ(MetadataCache::countCachedRecords(state), 3U);
    // A lookup by key alone returns the record of the last line.
    EXPECT_EQ(load().at(key).dir, "3");
    if (i > 0) {
      EXPECT_EQ(folder.read("state/metadata-P.jsonl"), bytes);
    }
    bytes = folder.read("state/metadata-P.jsonl");
    records = load();
  }
}

TEST_F(MetadataCacheTest, fileOfManyBlocks_isReadAsItsLinesSay) {
  constexpr int count = 20'000;
  std::string text;
  for (int i = 0; i < count; ++i) {
    text += fmt::format(R"({{"kind":"photo","name":"{}.JPG","px":{},"size":1}})"
                        "\n",
                        i % (count / 2), i);
    if (i == 5000) text += std::string(2'000'000, 'x') + "\n";
    if (i == 7000) text += "damage\n";
  }
  folder.write("state/metadata-P.jsonl", text);
  const auto records = load();
  EXPECT_EQ(records.size(), static_cast<std::size_t>(count / 2));
  for (const auto& [key, item] : records) {
    EXPECT_EQ(item.name, fmt::format("{}.JPG", *item.px - count / 2));
  }
}

TEST_F(MetadataCacheTest, legacyFile_isMergedAndBecomesLines) {
  writeLegacy(fmt::format(R"("IMG_0001.HEIC|1234|0.0":{},"old":{})",
                          R"({"kind":"photo","name":"IMG_0001.HEIC","px":1,"size":1234})",
                          sidecarLine));
  folder.write("state/metadata-P.jsonl", std::string{photoLine} + '\n');
  folder.write("state/metadata-Q.json", "{");
  const auto records = load();
  EXPECT_EQ(records.size(), 2U);
  EXPECT_EQ(records.at("IMG_0001.HEIC|1234|0.0").px, 4032);
  EXPECT_EQ(MetadataCache::countCachedRecords(state), 3U);
  MetadataCache::migrate("P", state);
  EXPECT_FALSE(MetadataCache::legacyExists("P", state));
  EXPECT_EQ(load(), records);
  EXPECT_EQ(MetadataCache::countCachedRecords(state), 2U);
  MetadataCache::migrate("P", state);  // nothing is left to do
  EXPECT_EQ(load(), records);
}

TEST_F(MetadataCacheTest, legacyRecord_isReadAsALineOfIt) {
  const std::string known = R"("kind":"other","name":"a")";
  std::vector<std::string> records{known, R"("kind":null,"name":"a","size":1)",
                                   R"("kind":"other","name":1,"size":1)"};
  for (const char* const size : {"null", "\"1\"", "-1", "1.5", "1e3", "9007199254740993",
                                 "18446744073709551615", "18446744073709551616"}) {
    records.push_back(fmt::format(R"({},"size":{})", known, size));
  }
  for (const char* const field : {"dir", "itemDate", "exifDate", "exifOffset", "lat", "lon", "px",
                                  "py", "cam", "contentID", "unknown"}) {
    for (const char* const value :
         {"null", "1", "1.5", "-3", "9007199254740993", "true", "\"x\"", "[]", "{}"}) {
      records.push_back(fmt::format(R"({},"size":1,"{}":{})", known, field, value));
    }
  }
  for (const std::string& record : records) {
    const std::string line = "{" + record + "}";
    TextReader reader{line};
    const auto lines = readJsonLines(reader);
    const auto legacy = MetadataCache::decodeLegacy(R"({"records":{"k":)" + line + "}}");
    ASSERT_EQ(legacy.has_value(), !lines.empty()) << record;
    if (legacy) {
      EXPECT_EQ(legacy->records.at("k"), lines.begin()->second) << record;
    }
  }
}

TEST_F(MetadataCacheTest, migrationThatFails_keepsTheLegacyFile) {
  writeLegacy(fmt::format(R"("a":{})", sidecarLine));
  // A folder occupies the name of the new file.
  folder.write("state/metadata-P.jsonl/x", "");
  EXPECT_THROW(MetadataCache::migrate("P", state), FileError);
  EXPECT_TRUE(MetadataCache::legacyExists("P", state));
  EXPECT_EQ(load().size(), 1U);
}

TEST_F(MetadataCacheTest, legacyFileInWhichNothingDecodes_stays) {
  for (const char* const text : {"{", R"({"records":{"a":{"name":1}}})"}) {
    folder.write("state/metadata-P.json", text);
    MetadataCache::migrate("P", state);
    EXPECT_TRUE(MetadataCache::legacyExists("P", state)) << text;
  }
  writeLegacy("");
  MetadataCache::migrate("P", state);
  EXPECT_FALSE(MetadataCache::legacyExists("P", state)) << "empty, and nothing in it is damaged";
}

TEST_F(MetadataCacheTest, absentOrUnusableFolder_isAnEmptyCache) {
  EXPECT_TRUE(load().empty());
  EXPECT_EQ(MetadataCache::countCachedRecords(state), 0U);
  EXPECT_EQ(MetadataCache::reset(state), MetadataCache::Removal{});
  EXPECT_FALSE(folder.has("state"));
  folder.write("file", "");
  EXPECT_THROW(MetadataCache::save({}, "P", folder / "file/state"), FileError);
}

TEST_F(MetadataCacheTest, reset_removesTheCachesAndNothingElse) {
  MetadataCache::save(recordsOf({photo("a", 1, 1)}), "P", state);
  writeLegacy("");
  folder.write("state/metadata-Q/x", "");
  folder.write("state/transfers.json", "");
  EXPECT_EQ(MetadataCache::reset(state), (MetadataCache::Removal{3, 0}));
  EXPECT_TRUE(folder.has("state/transfers.json"));
  EXPECT_TRUE(load().empty());
}

TEST_F(MetadataCacheTest, exampleOfTheDescription_isReadAndWrittenBack) {
  std::ifstream description{std::string{TAVRIX_DOCS} + "/cache.md"};
  const std::string text{std::istreambuf_iterator<char>{description}, {}};
  const std::size_t begin = text.find("```\n") + 4;
  const std::string example = text.substr(begin, text.find("```", begin) - begin);
  folder.write("state/metadata-P.jsonl", example);
  EXPECT_EQ(load().size(), 3U);
  MetadataCache::save(load(), "P", state);
  EXPECT_EQ(folder.read("state/metadata-P.jsonl"), example);
}

TEST(Checkpoint, save_isDueAtFirstAndThenOnceAnInterval) {
  using namespace std::chrono_literals;
  const Instant start{std::chrono::seconds{1779364800}};
  Checkpoint checkpoint;
  EXPECT_TRUE(checkpoint.isDue(start));
  checkpoint.lastSavedAt = start;
  EXPECT_FALSE(checkpoint.isDue(start + 19999ms));
  EXPECT_TRUE(checkpoint.isDue(start + 20s));
  EXPECT_TRUE(checkpoint.isDue(start - 1s));
}

TEST(SerialQueue, work_isDoneOneAfterAnotherAndToTheEnd) {
  std::vector<int> done;
  std::atomic<int> atOnce = 0;
  {
    SerialQueue queue;
    const auto post = [&](int number) {
      queue.post([&, number] {
        EXPECT_EQ(++atOnce, 1);
        std::this_thread::sleep_for(std::chrono::milliseconds{1});
        done.push_back(number);
        --atOnce;
      });
    };
    for (int i = 0; i < 10; ++i) post(i);
    queue.wait();
    EXPECT_EQ(done.size(), 10U);
    for (int i = 10; i < 20; ++i) post(i);
  }
  EXPECT_EQ(done.size(), 20U);
  EXPECT_TRUE(std::is_sorted(done.begin(), done.end()));
}

}  // namespace
}  // namespace tavrix
