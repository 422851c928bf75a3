#include "media/Snapshot.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <cerrno>

#include "foundation/files/FileReader.h"
#include "foundation/tests/support/FaultyFolder.h"
#include "foundation/tests/support/TemporaryFolder.h"

namespace tavrix {
namespace {

using Kind = SnapshotError::Kind;
using ::testing::ElementsAre;

class TextSource : public ByteReader {
 public:
  explicit TextSource(std::string text) : text_(std::move(text)) {}
  std::size_t read(std::span<char> buffer) override {
    const std::size_t count = text_.copy(buffer.data(), buffer.size(), at_);
    at_ += count;
    return count;
  }

 private:
  std::string text_;
  std::size_t at_ = 0;
};

std::vector<SnapshotItem> read(const std::string& text) {
  TextSource source{text};
  return Snapshot::read(source);
}

std::string written(const std::vector<SnapshotItem>& items) {
  StringSink sink;
  Snapshot::write(items, sink);
  return sink.text();
}

SnapshotItem item(const std::string& name) {
  SnapshotItem made;
  made.name = name;
  made.kind = "photo";
  return made;
}

std::string dateIn(const char* zone, const SnapshotItem& item) {
  const auto date = item.mediaAsset("id", TimeZone::load(zone).value()).captureDate();
  return date ? iso8601(*date) : "none";
}

TEST(SnapshotItem, exifDate_isReadInItsOffsetOrTheZone) {
  struct Row {
    const char* exifDate;
    std::optional<std::string> offset;
    const char* zone;
    const char* expected;  // "itemDate" if the EXIF date must be rejected
  };
  const Row rows[] = {
      {"2026:05:20 12:00:00", "+00:00", "Asia/Tokyo", "2026-05-20T12:00:00Z"},
      {"2026:05:20 12:00:00", "+03:00", "UTC", "2026-05-20T09:00:00Z"},
      {"2026:05:20 12:00:00", "-09:30", "UTC", "2026-05-20T21:30:00Z"},
      {"2026:05:20 12:00:00", "+25:00", "UTC", "2026-05-19T11:00:00Z"},
      {"2026:05:20 12:00:00", "+03:75", "UTC", "2026-05-20T07:45:00Z"},
      {"2024:02:29 23:59:59", "+00:00", "UTC", "2024-02-29T23:59:59Z"},
      {"9999:12:31 23:59:59", "+00:00", "UTC", "9999-12-31T23:59:59Z"},
      // No usable offset: a local time of the zone.
      {"2026:05:20 12:00:00", std::nullopt, "Asia/Tokyo", "2026-05-20T03:00:00Z"},
      {"2026:05:20 12:00:00", "", "Asia/Tokyo", "2026-05-20T03:00:00Z"},
      {"2026:05:20 12:00:00", "Z", "Asia/Tokyo", "2026-05-20T03:00:00Z"},
      {"2026:05:20 12:00:00", "+0300", "Asia/Tokyo", "2026-05-20T03:00:00Z"},
      {"2026:05:20 12:00:00", "+3:00", "Asia/Tokyo", "2026-05-20T03:00:00Z"},
      {"2026:05:20 12:00:00", "+03:0x", "Asia/Tokyo", "2026-05-20T03:00:00Z"},
      {"2026:05:20 12:00:00", "03:00 ", "Asia/Tokyo", "2026-05-20T03:00:00Z"},
      {"2026:03:08 02:30:00", std::nullopt, "America/New_York", "2026-03-08T07:30:00Z"},
      {"2026:10:25 02:30:00", std::nullopt, "Europe/Berlin", "2026-10-25T00:30:00Z"},
      // Invalid dates.
      {"0000:05:20 12:00:00", "+00:00", "UTC", "itemDate"},
      {"2026:00:20 12:00:00", "+00:00", "UTC", "itemDate"},
      {"2026:13:20 12:00:00", "+00:00", "UTC", "itemDate"},
      {"2026:05:00 12:00:00", "+00:00", "UTC", "itemDate"},
      {"2026:02:29 12:00:00", "+00:00", "UTC", "itemDate"},
      {"2026:04:31 12:00:00", "+00:00", "UTC", "itemDate"},
      {"2026:05:20 24:00:00", "+00:00", "UTC", "itemDate"},
      {"2026:05:20 12:60:00", "+00:00", "UTC", "itemDate"},
      {"2026:05:20 12:00:60", "+00:00", "UTC", "itemDate"},
      {"2026-05-20 12:00:00", "+00:00", "UTC", "itemDate"},
      {"2026:05:20T12:00:00", "+00:00", "UTC", "itemDate"},
      {"2026:05:20 12:00:0x", "+00:00", "UTC", "itemDate"},
      {"2026:05:20 12:00:+1", "+00:00", "UTC", "itemDate"},
      {"2026:05:20 12:00", "+00:00", "UTC", "itemDate"},
      {" 2026:05:20 12:00:00", "+00:00", "UTC", "itemDate"},
      {"0001:01:01 00:00:00", "+14:00", "UTC", "itemDate"},
      {"    :  :     :  :  ", "+00:00", "UTC", "itemDate"},
      {"", "+00:00", "UTC", "itemDate"},
  };
  for (const Row& row : rows) {
    SnapshotItem dated = item("a.jpg");
    dated.exifDate = row.exifDate;
    dated.exifOffset = row.offset;
    dated.itemDate = 1000000000.5;
    const std::string expected =
        row.expected == std::string{"itemDate"} ? "2001-09-09T01:46:40.500Z" : row.expected;
    EXPECT_EQ(dateIn(row.zone, dated), expected) << row.exifDate << " " << row.offset.value_or("-");
  }
  SnapshotItem undated = item("a.jpg");
  EXPECT_EQ(dateIn("UTC", undated), "none");
  for (const auto* const zone : {"UTC", "Asia/Kolkata", "America/New_York"}) {
    SnapshotItem dated = item("a.jpg");
    dated.exifDate = "2026:03:08 02:30:00";  // skipped in New York
    const auto cameraDate = dated.mediaAsset("id", TimeZone::load(zone).value()).cameraDate();
    EXPECT_EQ(iso8601(cameraDate.value()), "2026-03-08T02:30:00Z") << zone;
    undated.itemDate = 1000000000.5;
    EXPECT_FALSE(undated.mediaAsset("id", TimeZone::load(zone).value()).cameraDate());
  }
  undated.itemDate = 1e300;
  EXPECT_EQ(dateIn("UTC", undated), "none");
}

TEST(SnapshotItem, optimizedCopy_isASmallUneditedCameraStill) {
  struct Row {
    const char* name;
    const char* kind;
    std::uint64_t size;
    std::optional<std::int64_t> px;
    std::optional<std::int64_t> py;
    std::optional<bool> cam;
    bool expected;
  };
  const Row rows[] = {
      {"IMG_1.HEIC", "photo", 1400000, 2600, 1950, true, true},
      {"IMG_1.HEIC", "photo", 1, 1, 2600, true, true},
      {"beach.jpg", "?", 1, 1, 1, true, true},
      {"IMG_1.HEIC", "photo", 1400001, 2600, 1950, true, false},
      {"IMG_1.HEIC", "photo", 0, 2600, 1950, true, false},
      {"IMG_1.HEIC", "photo", 1400000, 2601, 1950, true, false},
      {"IMG_1.HEIC", "photo", 1400000, 1950, 2601, true, false},
      {"IMG_1.HEIC", "photo", 1400000, 0, 1950, true, false},
      {"IMG_1.HEIC", "photo", 1400000, 2600, -1, true, false},
      {"IMG_1.HEIC", "photo", 1400000, std::nullopt, 1950, true, false},
      {"IMG_1.HEIC", "photo", 1400000, 2600, std::nullopt, true, false},
      {"IMG_1.HEIC", "photo", 1400000, 2600, 1950, false, false},
      {"IMG_1.HEIC", "photo", 1400000, 2600, 1950, std::nullopt, false},
      {"IMG_1.HEIC", "video", 1400000, 2600, 1950, true, false},
      {"IMG_E1.HEIC", "photo", 1400000, 2600, 1950, true, false},
  };
  for (const Row& row : rows) {
    SnapshotItem made = item(row.name);
    made.kind = row.kind;
    made.size = row.size;
    made.px = row.px;
    made.py = row.py;
    made.cam = row.cam;
    EXPECT_EQ(made.mediaAsset("id", TimeZone::utc()).isOptimized(), row.expected) << (&row - rows);
  }
}

TEST(SnapshotItem, kindAndPlace_fallBackWhenTheyAreNoUse) {
  SnapshotItem made = item("clip.MOV");
  made.kind = "Photo";
  made.lat = 1;
  EXPECT_EQ(made.mediaAsset("id", TimeZone::utc()).kind(), MediaKind::video);
  EXPECT_FALSE(made.mediaAsset("id", TimeZone::utc()).location());
  made.lon = -2;
  EXPECT_EQ(made.mediaAsset("id", TimeZone::utc()).location(), (GeoPoint{1, -2}));
}

TEST(Snapshot, assets_getIdsOfTheirOwnInOrder) {
  TextSource source{
      R"([{"name":"a","kind":"photo","size":1,"dir":"d"}, {"name":"d/a","kind":"photo","size":1},
      {"name":"d/a#2","kind":"photo","size":1}, {"name":"a","kind":"photo","size":1,"dir":"d"},
      {"name":"a","kind":"photo","size":1,"dir":""}, {"name":"a","kind":"photo","size":1}])"};
  std::vector<std::string> ids;
  for (const MediaAsset& asset : Snapshot::readAssets(source, TimeZone::utc()))
    ids.emplace_back(asset.id());
  EXPECT_THAT(ids, ElementsAre("d/a", "d/a#2", "d/a#2#2", "d/a#3", "a", "a#2"));
}

TEST(Snapshot, manyFilesOfOneName_takeNoLongerThanTheirNumber) {
  std::string text = "[";
  for (int i = 0; i < 100'000; ++i) text += R"({"name":"a","kind":"other","size":0},)";
  text.back() = ']';
  TextSource source{text};
  EXPECT_EQ(Snapshot::readAssets(source, TimeZone::utc()).back().id(), "a#100000");
}

TEST(Snapshot, values_mayBeWrittenInAnyLawfulForm) {
  const auto items =
      read(R"([{"size": 1e3, "px": 12.0, "py": -0, "name": "a", "kind": "x", "dir": null,
      "later": {"name": [1, {"size": "x"}]}, "cam": null, "lat": 5, "name": "b", "itemDate": -1}])");
  SnapshotItem expected = item("b");
  expected.kind = "x";
  expected.size = 1000;
  expected.px = 12;
  expected.py = 0;
  expected.lat = 5;
  expected.itemDate = -1;
  EXPECT_THAT(items, ElementsAre(expected));
  EXPECT_EQ(read(R"([{"name":"a","kind":"b","size":18446744073709551615}])")[0].size, UINT64_MAX);
  EXPECT_TRUE(read(" [ ] ").empty());
}

TEST(Snapshot, badFile_isRefusedWithTheReasonAndThePlace) {
  struct Row {
    std::string text;
    Kind kind;
    std::string field;
  };
  const auto with = [](const std::string& more) {
    return R"([{"name":"a","kind":"b","size":1,)" + more + "}]";
  };
  const Row rows[] = {
      {"", Kind::notJson, ""},
      {"[{]", Kind::notJson, ""},
      {"[] []", Kind::notJson, ""},
      {"[\"\xFF\"]", Kind::notJson, ""},
      {with(R"("dir":"\udc00")"), Kind::notJson, ""},
      {"{}", Kind::notAList, ""},
      {"null", Kind::notAList, ""},
      {"[[]]", Kind::notAList, ""},
      {"[1]", Kind::notAList, ""},
      {"[null]", Kind::notAList, ""},
      {R"([{"name":"a","kind":"b"}])", Kind::missingField, "size"},
      {R"([{"kind":"b","size":1}])", Kind::missingField, "name"},
      {R"([{"name":"a","size":1}])", Kind::missingField, "kind"},
      {R"([{"name":null,"kind":"b","size":1}])", Kind::wrongType, "name"},
      {with(R"("size":null)"), Kind::wrongType, "size"},
      {with(R"("size":"1")"), Kind::wrongType, "size"},
      {with(R"("size":-1)"), Kind::outOfRange, "size"},
      {with(R"("size":1.5)"), Kind::outOfRange, "size"},
      {with(R"("size":18446744073709551616)"), Kind::outOfRange, "size"},
      {with(R"("px":0.5)"), Kind::outOfRange, "px"},
      {with(R"("px":9223372036854775808)"), Kind::outOfRange, "px"},
      {with(R"("cam":1)"), Kind::wrongType, "cam"},
      {with(R"("contentID":1)"), Kind::wrongType, "contentID"},
      {with(R"("lat":"1")"), Kind::wrongType, "lat"},
      {with(R"("lat":true)"), Kind::wrongType, "lat"},
      {with(R"("dir":["x"])"), Kind::wrongType, "dir"},
      {with(R"("dir":{})"), Kind::wrongType, "dir"},
      {with("\"x\":" + std::string(70, '[')), Kind::tooLarge, ""},
      {with("\"x\":\"" + std::string(1200 * 1024, 'x') + "\""), Kind::tooLarge, ""}};
  for (const Row& row : rows) {
    try {
      read(row.text);
      ADD_FAILURE() << row.text.substr(0, 80);
    } catch (const SnapshotError& error) {
      EXPECT_EQ(error.kind(), row.kind) << row.text.substr(0, 80);
      EXPECT_EQ(error.field(), row.field) << row.text.substr(0, 80);
    }
  }
  try {
    read("[\n{\"name\":\"a\",\"kind\":\"b\",\"size\":1},\n{\"name\":7}]");
    ADD_FAILURE();
  } catch (const SnapshotError& error) {
    EXPECT_EQ(error.position(), (JsonPosition{3, 10}));
    EXPECT_EQ(error.item(), 2U);
  }
}

RC_GTEST_PROP(Snapshot, anyList_comesBackEqual, ()) {
  const auto text = rc::gen::container<std::string>(rc::gen::inRange<char>(0, 127));
  std::vector<SnapshotItem> items;
  for (int i = *rc::gen::inRange(0, 5); i > 0; --i) {
    SnapshotItem made = item(*text);
    made.kind = *text;
    made.size = *rc::gen::arbitrary<std::uint64_t>();
    if (*rc::gen::arbitrary<bool>()) made.dir = *text;
    if (*rc::gen::arbitrary<bool>()) made.exifDate = *text;
    if (*rc::gen::arbitrary<bool>()) made.exifOffset = *text;
    if (*rc::gen::arbitrary<bool>()) made.itemDate = *rc::gen::arbitrary<double>();
    if (*rc::gen::arbitrary<bool>()) made.lat = *rc::gen::arbitrary<double>();
    if (*rc::gen::arbitrary<bool>()) made.lon = *rc::gen::arbitrary<double>();
    if (*rc::gen::arbitrary<bool>()) made.px = *rc::gen::arbitrary<std::int64_t>();
    if (*rc::gen::arbitrary<bool>()) made.py = *rc::gen::arbitrary<std::int64_t>();
    if (*rc::gen::arbitrary<bool>()) made.cam = *rc::gen::arbitrary<bool>();
    if (*rc::gen::arbitrary<bool>())
      made.contentID = *rc::gen::element<std::string>("", "2C5B-41F0");
    items.push_back(made);
  }
  RC_ASSERT(read(written(items)) == items);
}

TEST(Snapshot, file_isReplacedWholeOrNotAtAll) {
  TemporaryFolder temporary;
  FaultyFolder folder{openFolder(temporary.path())};
  Snapshot::write({item("a")}, folder, "snapshot.json");
  folder.faults().rule = failing(FileOperation::write, ENOSPC);
  EXPECT_THROW(Snapshot::write({}, folder, "snapshot.json"), FileError);
  EXPECT_THAT(Snapshot::read(*openFileForReading(temporary / "snapshot.json")),
              ElementsAre(item("a")));
}

/// Returns the first ```json block of a page.
std::string exampleOf(const std::string& page) {
  const auto source = openFileForReading(TAVRIX_DOCS "/" + page);
  std::string text(100'000, '\0');
  text.resize(source->read(text));
  const auto begin = text.find("```json\n") + 8;
  return text.substr(begin, text.find("```", begin) - begin);
}

TEST(Snapshot, exampleOfThePage_isWhatIsWritten) {
  const std::string example = exampleOf("snapshot.md");
  const auto items = read(example);
  EXPECT_EQ(written(items), example);
  TextSource source{example};
  const auto assets = Snapshot::readAssets(source, TimeZone::utc());
  ASSERT_EQ(assets.size(), 4U);
  EXPECT_TRUE(assets[0].isOptimized());
  EXPECT_EQ(iso8601(*assets[0].captureDate()), "2026-05-20T09:00:00Z");
  EXPECT_EQ(iso8601(*assets[3].captureDate()), "2026-05-21T17:20:00.250Z");
  EXPECT_EQ(assets[3].id(), "Screenshot 2026.png");
}

}  // namespace
}  // namespace tavrix
