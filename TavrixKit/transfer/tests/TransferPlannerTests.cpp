#include "transfer/TransferPlanner.h"

#include <gmock/gmock.h>

#include <set>

#include "foundation/Text.h"
#include "transfer/tests/TestLibrary.h"

namespace tavrix {
namespace {

using DestinationMarker::FileRecord;
using testing::ElementsAre;
using testing::IsEmpty;

using Paths = std::vector<std::string>;

struct LayoutCase {
  const char* name;
  TransferOptions options;
  std::vector<std::string> ids;
  Paths paths;
};

TransferOptions options(const std::function<void(TransferOptions&)>& change) {
  TransferOptions result;
  change(result);
  return result;
}

const auto separated = options([](auto& o) { o.separatePhotoVideo = true; });
const auto separatedFlat =
    options([](auto& o) { o.separatePhotoVideo = o.flattenSingleKind = true; });
const auto separatedWithoutFolders =
    options([](auto& o) { o.separatePhotoVideo = o.flatLayout = true; });
const auto withoutFolders = options([](auto& o) { o.flatLayout = true; });
const auto prefixed = options([](auto& o) { o.fileNamePrefix = "VK_"; });
const auto jpeg = options([](auto& o) { o.photoFormat = PhotoOutputFormat::jpeg; });
const auto h264 = options([](auto& o) { o.videoFormat = VideoOutputFormat::h264; });

class LayoutTest : public testing::TestWithParam<LayoutCase> {};

TEST_P(LayoutTest, files_ofOneGroup_lieWhereTheOptionsSay) {
  std::vector<MediaAsset> assets;
  for (const std::string& id : GetParam().ids) assets.push_back(assetOf(id));
  EXPECT_EQ(pathsOf(TransferPlanner::plan({groupOf("2026-05-20", assets)}, GetParam().options)),
            GetParam().paths);
}

INSTANTIATE_TEST_SUITE_P(
    Options, LayoutTest,
    testing::Values(
        LayoutCase{"mixedSeparated",
                   separated,
                   {"A/IMG_1400.HEIC", "A/IMG_1401.MOV"},
                   {"2026-05-20/Photo/IMG_1400.HEIC", "2026-05-20/Video/IMG_1401.MOV"}},
        LayoutCase{
            "photosSeparated", separated, {"A/IMG_1500.HEIC"}, {"2026-05-20/Photo/IMG_1500.HEIC"}},
        LayoutCase{
            "photosFlattened", separatedFlat, {"A/IMG_1500.HEIC"}, {"2026-05-20/IMG_1500.HEIC"}},
        LayoutCase{"videosFlattened",
                   separatedFlat,
                   {"A/IMG_1.MOV", "A/IMG_1.AAE"},
                   {"2026-05-20/IMG_1.MOV", "2026-05-20/IMG_1.AAE"}},
        LayoutCase{"mixedNotFlattened",
                   separatedFlat,
                   {"A/IMG_1.HEIC", "A/IMG_2.MOV"},
                   {"2026-05-20/Photo/IMG_1.HEIC", "2026-05-20/Video/IMG_2.MOV"}},
        LayoutCase{"livePhotoStaysTogether",
                   separated,
                   {"A/IMG_1.HEIC", "A/IMG_1.MOV", "A/IMG_1.AAE"},
                   {"2026-05-20/Photo/IMG_1.HEIC", "2026-05-20/Photo/IMG_1.MOV",
                    "2026-05-20/Photo/IMG_1.AAE"}},
        LayoutCase{"videoTakesItsSidecar",
                   separated,
                   {"A/IMG_1.MOV", "A/IMG_1.AAE"},
                   {"2026-05-20/Video/IMG_1.MOV", "2026-05-20/Video/IMG_1.AAE"}},
        LayoutCase{"noFolders", withoutFolders, {"A/IMG_1.HEIC"}, {"IMG_1.HEIC"}},
        LayoutCase{"noFoldersSeparated",
                   separatedWithoutFolders,
                   {"A/IMG_1.HEIC", "A/IMG_2.MOV"},
                   {"Photo/IMG_1.HEIC", "Video/IMG_2.MOV"}},
        LayoutCase{"prefixed",
                   prefixed,
                   {"A/IMG_1.HEIC", "A/IMG_2.MOV"},
                   {"2026-05-20/VK_IMG_1.HEIC", "2026-05-20/VK_IMG_2.MOV"}},
        LayoutCase{"jpeg",
                   jpeg,
                   {"A/IMG_1.PNG", "A/IMG_2.JPEG", "A/IMG_3.MOV", "A/IMG_1.AAE"},
                   {"2026-05-20/IMG_1.jpg", "2026-05-20/IMG_1.AAE", "2026-05-20/IMG_2.jpg",
                    "2026-05-20/IMG_3.MOV"}},
        LayoutCase{"h264",
                   h264,
                   {"A/IMG_1.HEIC", "A/IMG_1.MOV"},
                   {"2026-05-20/IMG_1.HEIC", "2026-05-20/IMG_1.mp4"}},
        LayoutCase{"sameNameOfTwoFolders",
                   {},
                   {"A/IMG_1.HEIC", "A/IMG_1.MOV", "B/IMG_1.HEIC", "B/img_1.mov"},
                   {"2026-05-20/IMG_1.HEIC", "2026-05-20/IMG_1.MOV", "2026-05-20/IMG_1 (2).HEIC",
                    "2026-05-20/img_1 (2).mov"}},
        LayoutCase{"pairSharesItsNumber",
                   {},
                   {"A/IMG_1.HEIC", "B/IMG_1.HEIC", "C/IMG_1.MOV", "C/IMG_1.HEIC"},
                   {"2026-05-20/IMG_1.HEIC", "2026-05-20/IMG_1 (2).HEIC",
                    "2026-05-20/IMG_1 (3).MOV", "2026-05-20/IMG_1 (3).HEIC"}},
        LayoutCase{"leadKeepsItsName",
                   jpeg,
                   {"A/IMG_E1.JPG", "A/IMG_1.PNG", "A/IMG_1.HEIC"},
                   {"2026-05-20/IMG_E1.jpg", "2026-05-20/IMG_1.jpg", "2026-05-20/IMG_1 (2).jpg"}},
        LayoutCase{"nameOfAFileInTheMaking",
                   {},
                   {"A/IMG_1.JPG", "A/IMG_1.JPG.PART"},
                   {"2026-05-20/IMG_1.JPG", "2026-05-20/IMG_1.JPG.PART_"}},
        LayoutCase{"cyrillicCase",
                   {},
                   {"A/\u0424\u043e\u0442\u043e.jpg", "B/\u0444\u043e\u0442\u043e.jpg"},
                   {"2026-05-20/\u0424\u043e\u0442\u043e.jpg",
                    "2026-05-20/\u0444\u043e\u0442\u043e (2).jpg"}}),
    [](const auto& row) { return row.param.name; });

TEST(TransferPlanner, conversions_andPictures_areMarked) {
  auto both = jpeg;
  both.videoFormat = VideoOutputFormat::h264;
  const auto plan = TransferPlanner::plan(
      {groupOf("d", {assetOf("A/IMG_1.HEIC"), assetOf("A/IMG_1.MOV"), assetOf("A/IMG_1.AAE"),
                     assetOf("A/IMG_E1.JPG"), assetOf("A/notes.txt")})},
      both);
  std::vector<std::pair<std::string, bool>> marks;
  for (const auto& file : plan.files) marks.emplace_back(textOf(file.conversion), file.isPicture);
  EXPECT_THAT(marks, ElementsAre(std::pair{"jpeg", true}, std::pair{"h264", false},
                                 std::pair{"none", false}, std::pair{"none", true},
                                 std::pair{"none", false}));
}

TEST(TransferPlanner, names_thatNoVolumeTakes_areMadeToFit) {
  const std::string longName = std::string(300, 'x') + ".HEIC";
  const auto plan = TransferPlanner::plan(
      {groupOf("d",
               {assetOf("A/" + longName), assetOf("B/" + longName), assetOf("A/bad\xff.jpg")})},
      {});
  EXPECT_EQ(plan.files[0].relativePath, "d/" + std::string(250, 'x') + ".HEIC");
  EXPECT_EQ(plan.files[1].relativePath, "d/" + std::string(246, 'x') + " (2).HEIC");
  EXPECT_EQ(plan.files[2].relativePath, "d/bad\uFFFD.jpg");
}

/// Returns the destination as the phone "me" sees it.
DestinationView view(const Paths& onDisk, const std::vector<FileRecord>& mine = {},
                     const std::vector<FileRecord>& others = {}) {
  FilesOnDisk files;
  for (const std::string& path : onDisk) files.add(path, {1000, {}});
  DestinationMarker::Marker marker;
  marker.records.push_back({1, "me", "", "", {}, {}, mine});
  marker.records.push_back({1, "other", "", "", {}, {}, others});
  return {std::move(files), RecordedFiles{marker, "me"}};
}

FileRecord recordOf(const std::string& path, const std::string& id,
                    std::optional<std::string> cloudID = {}) {
  return {path, 1000, std::nullopt, id, cloudID};
}

struct OnlyNewCase {
  const char* name;
  DestinationView destination;
  Paths planned;
  std::vector<std::string> known;
};

class OnlyNewTest : public testing::TestWithParam<OnlyNewCase> {};

TEST_P(OnlyNewTest, plan_ofOneLivePhoto_leavesOutWhatIsThere) {
  const auto group = groupOf("d", {assetOf("A/IMG_1.HEIC"), assetOf("A/IMG_1.MOV")});
  const auto plan = TransferPlanner::plan({group}, {}, GetParam().destination);
  EXPECT_EQ(pathsOf(plan), GetParam().planned);
  std::vector<std::string> known;
  for (const MediaAsset& asset : plan.skippedKnown) known.emplace_back(asset.id());
  EXPECT_EQ(known, GetParam().known);
  EXPECT_EQ(TransferPlanner::newBundles(*group.group, "d", {}, GetParam().destination).empty(),
            plan.files.empty());
}

const Paths bothPaths{"d/IMG_1.HEIC", "d/IMG_1.MOV"};
const Paths numberedPaths{"d/IMG_1 (2).HEIC", "d/IMG_1 (2).MOV"};
const std::vector<std::string> bothIDs{"A/IMG_1.HEIC", "A/IMG_1.MOV"};

INSTANTIATE_TEST_SUITE_P(
    Destinations, OnlyNewTest,
    testing::Values(OnlyNewCase{"empty", view({}), bothPaths, {}},
                    OnlyNewCase{"allThere", view(bothPaths), {}, bothIDs},
                    OnlyNewCase{"oneDeleted",
                                view({"d/IMG_1.MOV"}, {recordOf("d/IMG_1.HEIC", "A/IMG_1.HEIC")}),
                                {"d/IMG_1.HEIC"},
                                {"A/IMG_1.MOV"}},
                    OnlyNewCase{"recordedUnderItsNumber",
                                view({"d/IMG_1 (2).HEIC", "d/IMG_1.MOV"},
                                     {recordOf("d/IMG_1 (2).HEIC", "A/IMG_1.HEIC")}),
                                {},
                                bothIDs},
                    OnlyNewCase{"recordedInAnotherFolder",
                                view({"e/IMG_1.HEIC"}, {recordOf("e/IMG_1.HEIC", "A/IMG_1.HEIC")}),
                                bothPaths,
                                {}},
                    OnlyNewCase{
                        "recordedUnderAPrefix",
                        view({"d/VK_IMG_1.HEIC"}, {recordOf("d/VK_IMG_1.HEIC", "A/IMG_1.HEIC")}),
                        bothPaths,
                        {}},
                    OnlyNewCase{"pathOfAnotherPhone",
                                view(bothPaths, {}, {recordOf("d/IMG_1.HEIC", "A/IMG_1.HEIC")}),
                                numberedPaths,
                                {}},
                    OnlyNewCase{"pathOfAnotherAsset",
                                view(bothPaths, {recordOf("d/IMG_1.MOV", "B/IMG_1.MOV")}),
                                numberedPaths,
                                {}},
                    OnlyNewCase{"recordOfAnotherWithoutItsFile",
                                view({"d/IMG_1.MOV"}, {recordOf("d/IMG_1.HEIC", "B/IMG_1.HEIC")}),
                                {"d/IMG_1.HEIC"},
                                {"A/IMG_1.MOV"}},
                    OnlyNewCase{"secondNumberTaken",
                                view({"d/IMG_1.HEIC", "d/IMG_1 (2).MOV"}, {},
                                     {recordOf("d/IMG_1.HEIC", "A/IMG_1.HEIC")}),
                                {"d/IMG_1 (3).HEIC", "d/IMG_1 (3).MOV"},
                                {}},
                    OnlyNewCase{"copiedUnderSeveralNames",
                                view({"d/IMG_1.HEIC", "d/IMG_1 (2).MOV", "d/VK_IMG_1.MOV"},
                                     {recordOf("d/IMG_1 (2).MOV", "A/IMG_1.MOV"),
                                      recordOf("d/VK_IMG_1.MOV", "A/IMG_1.MOV")}),
                                {},
                                bothIDs},
                    OnlyNewCase{"ownFileUnderTheNumber",
                                view({"d/IMG_1.HEIC", "d/IMG_1 (2).HEIC"},
                                     {recordOf("d/IMG_1 (2).HEIC", "A/IMG_1.HEIC")},
                                     {recordOf("d/IMG_1.HEIC", "A/IMG_1.HEIC")}),
                                {"d/IMG_1 (2).MOV"},
                                {"A/IMG_1.HEIC"}}),
    [](const auto& row) { return row.param.name; });

TEST(TransferPlanner, prefix_isNoPartOfTheNameWhoseExtensionIsReplaced) {
  auto chosen = h264;
  chosen.fileNamePrefix = "v1.2_";
  const MediaAsset video{"x",          "IMG_0014",   std::nullopt, MediaKind::video, 1,
                         std::nullopt, std::nullopt, false,        std::nullopt,     std::nullopt};
  EXPECT_EQ(TransferPlanner::relativePath(video, {.folderName = "d"}, chosen),
            "d/v1.2_IMG_0014.mp4");
}

TEST(TransferPlanner, claimOfAKilledRun_yieldsToAFileThatLanded) {
  // This phone's run was killed before it got to the file, and another phone's file landed there.
  const Shared<FilesOnDisk> onDisk = FilesOnDisk{{"d/IMG_1.HEIC", {1000, {}}}};
  FileRecord landed = recordOf("d/IMG_1.HEIC", "A/IMG_1.HEIC");
  landed.sha256 = std::string(64, 'a');
  const DestinationMarker::Marker marker{{{1,
                                           "me",
                                           "",
                                           "",
                                           {},
                                           Instant{std::chrono::seconds{9}},
                                           {recordOf("d/IMG_1.HEIC", "A/IMG_1.HEIC")}},
                                          {1, "other", "", "", {}, {}, {landed}}}};
  const DestinationView mine{onDisk, RecordedFiles{marker, "me"}};
  const auto group = groupOf("d", {assetOf("A/IMG_1.HEIC")});
  EXPECT_THAT(pathsOf(TransferPlanner::plan({group}, {}, mine)), ElementsAre("d/IMG_1 (2).HEIC"));
  EXPECT_FALSE(mine.isStillOurs("d/IMG_1.HEIC"));
  EXPECT_THAT(pathsOf(TransferPlanner::plan({group}, {}, {onDisk, RecordedFiles{marker, "other"}})),
              IsEmpty());
}

/// A plan for one file of 2,000 bytes where a file is recorded under its id.
struct SameIDCase {
  const char* name;
  const char* id;
  std::uint64_t size;
  TransferOptions options;
  FileRecord record;
  Paths planned;
};

class SameIDTest : public testing::TestWithParam<SameIDCase> {};

TEST_P(SameIDTest, fileOfAnotherSize_isAnotherPicture) {
  const SameIDCase& row = GetParam();
  DestinationMarker::Marker marker{{{1, "me", "", "", {}, {}, {row.record}}}};
  const DestinationView destination{FilesOnDisk{{row.record.path, {1000, {}}}},
                                    RecordedFiles{marker, "me"}};
  const auto group = groupOf("d", {assetOf(row.id, row.size)});
  EXPECT_EQ(pathsOf(TransferPlanner::plan({group}, row.options, destination)), row.planned);
}

FileRecord recordOfSize(const std::string& path, const std::string& id, std::uint64_t size) {
  return {path, size, std::nullopt, id, std::nullopt};
}

INSTANTIATE_TEST_SUITE_P(
    Records, SameIDTest,
    testing::Values(
        SameIDCase{"theSame", "A/1.HEIC", 2000, {}, recordOfSize("d/1.HEIC", "A/1.HEIC", 2000), {}},
        SameIDCase{"otherSize",
                   "A/1.HEIC",
                   2000,
                   {},
                   recordOfSize("d/1.HEIC", "A/1.HEIC", 1000),
                   {"d/1 (2).HEIC"}},
        SameIDCase{"otherSizeUnderANumber",
                   "A/1.HEIC",
                   2000,
                   {},
                   recordOfSize("d/1 (2).HEIC", "A/1.HEIC", 1000),
                   {"d/1.HEIC"}},
        SameIDCase{
            "sizeUnknown", "A/1.HEIC", 0, {}, recordOfSize("d/1.HEIC", "A/1.HEIC", 1000), {}},
        SameIDCase{
            "claimOfThisSize", "A/1.HEIC", 1000, {}, recordOfSize("d/1.HEIC", "A/1.HEIC", 0), {}},
        SameIDCase{"claimOfAnotherSize",
                   "A/1.HEIC",
                   2000,
                   {},
                   recordOfSize("d/1.HEIC", "A/1.HEIC", 0),
                   {"d/1 (2).HEIC"}},
        SameIDCase{
            "convertedStill", "A/1.HEIC", 2000, jpeg, recordOfSize("d/1.jpg", "A/1.HEIC", 700), {}},
        SameIDCase{"stillCopiedAsItIs",
                   "A/1.JPG",
                   2000,
                   jpeg,
                   recordOfSize("d/1.jpg", "A/1.JPG", 700),
                   {"d/1 (2).jpg"}},
        SameIDCase{
            "convertedVideo", "A/1.mp4", 2000, h264, recordOfSize("d/1.mp4", "A/1.mp4", 700), {}},
        SameIDCase{"videoAsItIs",
                   "A/1.mp4",
                   2000,
                   {},
                   recordOfSize("d/1.mp4", "A/1.mp4", 700),
                   {"d/1 (2).mp4"}}),
    [](const auto& row) { return row.param.name; });

constexpr Instant taken{std::chrono::seconds{1779364800}};

/// Returns a file whose shot was taken `later` after `taken`, by its own clock or by its file's
/// date.
MediaAsset datedAsset(const std::string& id, std::uint64_t size, std::chrono::milliseconds later,
                      bool isOwn, bool isOptimized = false) {
  const auto date = taken + later;
  return MediaAsset{id,
                    id.substr(2),
                    "A",
                    mediaKindOfFileName(id),
                    size,
                    date + std::chrono::seconds{1172},
                    std::nullopt,
                    isOptimized,
                    std::nullopt,
                    std::nullopt,
                    isOwn ? std::optional{date} : std::nullopt};
}

/// A plan for a file of 1,000 bytes where a file of `recordedSize` is recorded for its id.
struct MomentCase {
  const char* name;
  std::uint64_t recordedSize;
  std::optional<bool> isOwnRecorded;  ///< of the recorded date; nullopt if none is recorded
  bool isOwn;                         ///< of the file's date
  std::chrono::milliseconds later;
  bool isOptimized;
  bool isNew;
};

class MomentTest : public testing::TestWithParam<MomentCase> {};

TEST_P(MomentTest, fileOfAnotherMoment_isAnotherPicture) {
  const MomentCase& row = GetParam();
  FileRecord record{"d/1.DNG", row.recordedSize, std::nullopt, "A/1.DNG", std::nullopt};
  if (row.isOwnRecorded) {
    const auto shift = std::chrono::seconds{*row.isOwnRecorded ? 0 : 1172};
    record.date = ShotDate{taken + shift, *row.isOwnRecorded};
  }
  const auto asset = datedAsset("A/1.DNG", 1000, row.later, row.isOwn, row.isOptimized);
  const auto plan = TransferPlanner::plan({groupOf("d", {asset})}, {}, view({"d/1.DNG"}, {record}));
  EXPECT_EQ(pathsOf(plan), row.isNew ? Paths{"d/1 (2).DNG"} : Paths{});
}

using namespace std::chrono_literals;

INSTANTIATE_TEST_SUITE_P(
    Records, MomentTest,
    testing::Values(MomentCase{"same", 1000, true, true, 0s, false, false},
                    MomentCase{"nextShot", 1000, true, true, 1s, false, true},
                    MomentCase{"wholeHoursApart", 1000, true, true, 2h, false, true},
                    MomentCase{"fileDateMovedByItsVolume", 1000, false, false, 45min, false, false},
                    MomentCase{"fileDateOfAnotherMinute", 1000, false, false, 60s, false, true},
                    MomentCase{"fileDateOfTheDayAfterNext", 1000, false, false, 48h, false, true},
                    MomentCase{"unreadableThen", 1000, false, true, 77s, false, false},
                    MomentCase{"unreadableNow", 1000, true, false, 77s, false, false},
                    MomentCase{"reduced", 9000, true, true, 0s, true, false},
                    MomentCase{"reducedOfAnotherShot", 9000, true, true, 1s, true, true},
                    MomentCase{"reducedWithoutRecordedDate", 9000, {}, true, 0s, true, true},
                    MomentCase{"reducedOfThatFileDate", 9000, false, false, 0s, true, false},
                    MomentCase{"reducedOrOfAnotherCard", 9000, false, false, 1h, true, true},
                    MomentCase{"claimOfAReducedCopy", 0, {}, true, 0s, true, false},
                    MomentCase{"whole", 9000, true, true, 0s, false, true}),
    [](const auto& row) { return row.param.name; });

TEST(TransferPlanner, dateOfAnEarlierForm_isComparedByQuartersOfAnHour) {
  FileRecord record{"d/1.DNG", 1000, std::nullopt, "A/1.DNG", std::nullopt};
  record.date = ShotDate{taken, true, true};
  for (const bool isOwn : {true, false}) {
    const auto shift = isOwn ? 0s : 1172s;
    const auto pathsOfOne = [&](std::chrono::milliseconds later) {
      const auto asset = datedAsset("A/1.DNG", 1000, later - shift, isOwn);
      return pathsOf(
          TransferPlanner::plan({groupOf("d", {asset})}, {}, view({"d/1.DNG"}, {record})));
    };
    EXPECT_EQ(pathsOfOne(3h), Paths{}) << "the zone of the camera";
    EXPECT_EQ(pathsOfOne(67min), Paths{"d/1 (2).DNG"});
  }
}

TEST(TransferPlanner, sidecar_goesByTheDateOfItsShot) {
  const auto shot = [](std::uint64_t size, std::uint64_t sidecarSize,
                       std::chrono::milliseconds later) {
    const std::vector assets{datedAsset("A/IMG_1.HEIC", size, later, true),
                             datedAsset("A/IMG_1.AAE", sidecarSize, later + 77s, false)};
    return std::vector{groupOf("d", assets)};
  };
  Paths onDisk;
  std::vector<FileRecord> records;
  const auto transfer = [&](const std::vector<TransferPlanner::NamedGroup>& groups) {
    const auto plan = TransferPlanner::plan(groups, {}, view(onDisk, records));
    for (const PlannedFile& file : plan.files) {
      onDisk.push_back(file.relativePath);
      records.push_back({file.relativePath, file.asset.sizeBytes(), std::nullopt,
                         std::string{file.asset.id()}, std::nullopt, std::nullopt,
                         recordedDate(file.asset, leadOf(file.bundle), true)});
    }
    return pathsOf(plan);
  };
  EXPECT_THAT(transfer(shot(1000, 50, 0s)), ElementsAre("d/IMG_1.HEIC", "d/IMG_1.AAE"));
  // A sidecar edited again is copied without its picture, and is known from then on.
  EXPECT_THAT(transfer(shot(1000, 61, 0s)), ElementsAre("d/IMG_1 (2).AAE"));
  EXPECT_THAT(transfer(shot(1000, 61, 0s)), IsEmpty());
  // Another card's sidecar of the same size is copied with its own picture.
  for (const std::uint64_t size : {1000U, 2000U}) {
    const std::string number = size == 1000 ? " (3)" : " (4)";
    const auto other = shot(size, 61, size == 1000 ? 5s : 9s);
    EXPECT_THAT(transfer(other),
                ElementsAre("d/IMG_1" + number + ".HEIC", "d/IMG_1" + number + ".AAE"));
    EXPECT_THAT(transfer(other), IsEmpty());
  }
  EXPECT_THAT(transfer(shot(1000, 50, 0s)), IsEmpty());
  // If the original is missing, the edited version has the date.
  for (const auto later : {0s, 5s}) {
    const std::string number = later == 0s ? "" : " (2)";
    const std::vector assets{datedAsset("A/IMG_E9.HEIC", 3000, later, true),
                             datedAsset("A/IMG_9.AAE", 61, 0s, false)};
    EXPECT_THAT(
        transfer({groupOf("d", assets)}),
        testing::UnorderedElementsAre("d/IMG_E9" + number + ".HEIC", "d/IMG_9" + number + ".AAE"));
  }
}

TEST(TransferPlanner, picturesOfSeveralCardsWithOneID_areEachKnownWhereTheyLie) {
  const DestinationMarker::Marker marker{{{1,
                                           "me",
                                           "",
                                           "",
                                           {},
                                           {},
                                           {recordOfSize("d/1.HEIC", "A/1.HEIC", 1000),
                                            recordOfSize("d/1 (2).HEIC", "A/1.HEIC", 2000)}}}};
  const DestinationView destination{
      FilesOnDisk{{"d/1.HEIC", {1000, {}}}, {"d/1 (2).HEIC", {2000, {}}}},
      RecordedFiles{marker, "me"}};
  const auto planFor = [&](std::uint64_t size, bool onlyNew) {
    return TransferPlanner::plan({groupOf("d", {assetOf("A/1.HEIC", size)})},
                                 options([&](auto& o) { o.onlyNew = onlyNew; }), destination);
  };
  EXPECT_THAT(planFor(1000, true).knownPaths, ElementsAre("d/1.HEIC"));
  EXPECT_THAT(planFor(2000, true).knownPaths, ElementsAre("d/1 (2).HEIC"));
  EXPECT_THAT(pathsOf(planFor(1000, false)), ElementsAre("d/1.HEIC"));
  EXPECT_THAT(pathsOf(planFor(2000, false)), ElementsAre("d/1 (2).HEIC"));
  for (const bool onlyNew : {true, false}) {
    EXPECT_THAT(pathsOf(planFor(3000, onlyNew)), ElementsAre("d/1 (3).HEIC"));
  }
}

TEST(TransferPlanner, changedSidecar_isCopiedBesideThePictureThatIsThere) {
  const auto group = groupOf("d", {assetOf("A/IMG_1.HEIC"), assetOf("A/IMG_1.AAE", 77)});
  const auto plan = TransferPlanner::plan(
      {group}, {},
      view({"d/IMG_1.HEIC", "d/IMG_1.AAE"},
           {recordOf("d/IMG_1.HEIC", "A/IMG_1.HEIC"), recordOf("d/IMG_1.AAE", "A/IMG_1.AAE")}));
  EXPECT_THAT(pathsOf(plan), ElementsAre("d/IMG_1 (2).AAE"));
  EXPECT_THAT(plan.knownPaths, ElementsAre("d/IMG_1.HEIC"));
}

TEST(TransferPlanner, keptOriginal_countsOnlyForTheFormatThatItCannotHave) {
  const auto group = groupOf("d", {assetOf("A/IMG_1.HEIC")});
  TransferOptions options;
  options.photoFormat = PhotoOutputFormat::jpeg;
  const auto planWith = [&](const std::string& path, std::optional<std::string> keptInsteadOf) {
    FileRecord record = recordOf(path, "A/IMG_1.HEIC");
    record.keptInsteadOf = std::move(keptInsteadOf);
    return TransferPlanner::plan({group}, options, view({path}, {record}));
  };
  // A plain copy does not mean a failed conversion, and neither does a failure for another format.
  EXPECT_THAT(pathsOf(planWith("d/IMG_1.HEIC", std::nullopt)), ElementsAre("d/IMG_1.jpg"));
  EXPECT_THAT(pathsOf(planWith("d/IMG_1.HEIC", "h264")), ElementsAre("d/IMG_1.jpg"));
  EXPECT_THAT(pathsOf(planWith("e/IMG_1.HEIC", "jpeg")), ElementsAre("d/IMG_1.jpg"));
  for (const auto* const path : {"d/IMG_1.HEIC", "d/IMG_1 (2).HEIC"}) {
    const auto plan = planWith(path, "jpeg");
    EXPECT_THAT(pathsOf(plan), IsEmpty());
    EXPECT_THAT(plan.knownPaths, ElementsAre(path));
  }
  // The file is gone, or everything is to be copied again.
  FileRecord record = recordOf("d/IMG_1.HEIC", "A/IMG_1.HEIC");
  record.keptInsteadOf = "jpeg";
  EXPECT_THAT(pathsOf(TransferPlanner::plan({group}, options, view({"d/other"}, {record}))),
              ElementsAre("d/IMG_1.jpg"));
  options.onlyNew = false;
  EXPECT_THAT(pathsOf(TransferPlanner::plan({group}, options, view({"d/IMG_1.HEIC"}, {record}))),
              ElementsAre("d/IMG_1.jpg"));
}

TEST(TransferPlanner, onlyNewOff_plansEverything_butNeverOnAnothersPath) {
  const auto all = options([](auto& o) { o.onlyNew = false; });
  const auto group = groupOf("d", {assetOf("A/IMG_1.HEIC"), assetOf("A/IMG_1.MOV")});
  EXPECT_EQ(pathsOf(TransferPlanner::plan({group}, all, view(bothPaths))), bothPaths);
  EXPECT_EQ(pathsOf(TransferPlanner::plan({group}, all,
                                          view(bothPaths, {}, {recordOf("d/IMG_1.HEIC", "x")}))),
            numberedPaths);
  EXPECT_THAT(pathsOf(TransferPlanner::plan({group}, all,
                                            view({"d/IMG_1.HEIC", "d/IMG_1 (2).HEIC"},
                                                 {recordOf("d/IMG_1 (2).HEIC", "A/IMG_1.HEIC")}))),
              ElementsAre("d/IMG_1 (2).HEIC", "d/IMG_1.MOV"));
}

TEST(TransferPlanner, zip_plansEverythingUnderItsPlainName) {
  const auto zip = options([](auto& o) { o.container = TransferOptions::Container::zipPerGroup; });
  const auto group = groupOf("d", {assetOf("A/IMG_1.HEIC"), assetOf("A/IMG_1.MOV")});
  EXPECT_EQ(pathsOf(TransferPlanner::plan({group}, zip,
                                          view(bothPaths, {}, {recordOf("d/IMG_1.HEIC", "x")}))),
            bothPaths);
}

TEST(TransferPlanner, cloudID_recognisesTheShotOfAnotherPhone) {
  const auto group = groupOf("d", {assetOf("A/IMG_1.HEIC", 1000, "cloud-1")});
  EXPECT_THAT(
      pathsOf(TransferPlanner::plan(
          {group}, {},
          view({"d/IMG_1.HEIC"}, {}, {recordOf("d/IMG_1.HEIC", "Z/IMG_1.HEIC", "cloud-1")}))),
      IsEmpty());
}

TEST(TransferPlanner, names_areGivenBeforeAnythingIsLeftOut) {
  const auto group =
      groupOf("d", {assetOf("A/IMG_1.HEIC"), assetOf("B/IMG_1.HEIC"), assetOf("C/IMG_1.HEIC")});
  EXPECT_THAT(pathsOf(TransferPlanner::plan({group}, {}, view({"d/IMG_1 (2).HEIC"}))),
              ElementsAre("d/IMG_1.HEIC", "d/IMG_1 (3).HEIC"));
}

TEST(TransferPlanner, pathsOfAPlan_whateverTheLibrary_areUniqueAndStable) {
  std::uint64_t state = 7;
  const auto random = [&](std::uint64_t below) {
    state = state * 6364136223846793005U + 1442695040888963407U;
    return (state >> 33U) % below;
  };
  const Paths endings{"HEIC", "MOV", "AAE", "JPG", "jpg", "PNG"};
  for (int round = 0; round < 200; ++round) {
    std::vector<MediaAsset> assets;
    for (std::uint64_t i = 0; i < 30; ++i) {
      const std::string name = std::string{random(2) == 0 ? "IMG_" : "img_E"} +
                               std::to_string(random(4)) + "." + endings[random(endings.size())];
      assets.push_back(assetOf(std::string(1, static_cast<char>('A' + random(3))) + "/" + name));
    }
    TransferOptions chosen;
    chosen.photoFormat = random(2) == 0 ? PhotoOutputFormat::jpeg : PhotoOutputFormat::original;
    chosen.flatLayout = random(2) == 0;
    const std::vector groups{groupOf("d", assets), groupOf("D", assets)};
    const auto plan = TransferPlanner::plan(groups, chosen);
    std::set<std::string> folded;
    std::vector<FileRecord> records;
    for (const auto& file : plan.files) {
      EXPECT_TRUE(folded.insert(caseFolded(file.relativePath)).second) << file.relativePath;
      records.push_back(recordOf(file.relativePath, std::string{file.asset.id()}));
    }
    EXPECT_EQ(plan.files.size(), 2 * assets.size());
    // Once all files are there, nothing is left to copy.
    EXPECT_THAT(pathsOf(TransferPlanner::plan(groups, chosen, view(pathsOf(plan)))), IsEmpty());
  }
}

}  // namespace
}  // namespace tavrix
