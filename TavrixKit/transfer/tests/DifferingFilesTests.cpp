// Tests how a plan treats files of a destination that have not the expected size.

#include "transfer/DifferingFiles.h"

#include <gmock/gmock.h>

#include "transfer/tests/TestLibrary.h"

namespace tavrix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Kind = DifferingFile::Kind;

/// A plan for "A/1.HEIC" of 1,000 bytes, whose path "d/1.HEIC" has a file.
struct DifferenceCase {
  const char* name;
  std::uint64_t onDisk;
  std::optional<std::uint64_t> recorded;
  std::vector<std::string> planned{};
  std::optional<Kind> difference{};
  bool isReduced = false;  ///< the phone has only a reduced copy
  PhotoOutputFormat format = PhotoOutputFormat::original;
};

class DifferenceTest : public testing::TestWithParam<DifferenceCase> {};

TEST_P(DifferenceTest, fileAtThePlannedPath_staysThere_andIsNamedIfItsSizeDiffers) {
  const DifferenceCase& row = GetParam();
  const MediaAsset whole = assetOf("A/1.HEIC");
  const MediaAsset asset{whole.id(),        whole.name(),        whole.directory(), whole.kind(),
                         whole.sizeBytes(), whole.captureDate(), std::nullopt,      row.isReduced,
                         std::nullopt,      std::nullopt};
  TransferOptions options;
  options.photoFormat = row.format;
  const std::string path = row.format == PhotoOutputFormat::jpeg ? "d/1.jpg" : "d/1.HEIC";
  DestinationMarker::Marker marker;
  if (row.recorded) {
    marker.records.push_back(
        {1, "me", "", "", {}, {}, {{path, *row.recorded, "digest", "A/1.HEIC", std::nullopt}}});
  }
  const auto plan = TransferPlanner::plan(
      {groupOf("d", {asset})}, options,
      DestinationView{FilesOnDisk{{path, {row.onDisk, {}}}}, RecordedFiles{marker, "me"}});
  EXPECT_EQ(pathsOf(plan), row.planned);
  if (!row.difference) {
    EXPECT_THAT(plan.differing, IsEmpty());
    return;
  }
  const auto expected =
      row.format == PhotoOutputFormat::jpeg ? row.recorded : row.recorded.value_or(1000);
  EXPECT_THAT(plan.differing,
              ElementsAre(DifferingFile{"A/1.HEIC", path, *row.difference, row.onDisk, expected}));
  EXPECT_EQ(countsOf(plan.differing).of(*row.difference),
            (DifferingCounts::OfKind{.files = 1, .firstPath = path}));
}

constexpr auto jpeg = PhotoOutputFormat::jpeg;

INSTANTIATE_TEST_SUITE_P(
    Sizes, DifferenceTest,
    testing::Values(
        DifferenceCase{"asRecorded", 1000, 1000},
        DifferenceCase{"shorterThanRecorded", 999, 1000, {}, Kind::damaged},
        DifferenceCase{"longerThanRecorded", 1001, 1000, {}, Kind::changed},
        DifferenceCase{"emptied", 0, 1000, {"d/1 (2).HEIC"}, Kind::emptied},
        DifferenceCase{"withoutRecord", 1000, std::nullopt},
        DifferenceCase{"otherWithoutRecord", 7, std::nullopt, {}, Kind::foreign},
        DifferenceCase{"emptyWithoutRecord", 0, std::nullopt, {}, Kind::foreign},
        DifferenceCase{"originalOfAReducedCopy", 5000, std::nullopt, {}, {}, true},
        DifferenceCase{"shorterThanAReducedCopy", 7, std::nullopt, {}, Kind::foreign, true},
        DifferenceCase{"convertedAsRecorded", 400, 400, {}, {}, false, jpeg},
        DifferenceCase{"convertedShorter", 399, 400, {}, Kind::damaged, false, jpeg},
        DifferenceCase{"convertedEmptied", 0, 400, {"d/1 (2).jpg"}, Kind::emptied, false, jpeg},
        DifferenceCase{"convertedWithoutRecord", 7, std::nullopt, {}, {}, false, jpeg},
        DifferenceCase{"convertedEmpty", 0, std::nullopt, {}, Kind::foreign, false, jpeg}),
    [](const auto& row) { return row.param.name; });

TEST(DifferingFiles, copyOfAnEmptiedFile_isKnownOnTheNextRun_andKeepsItsPair) {
  const auto group = groupOf("d", {assetOf("A/1.HEIC"), assetOf("A/1.MOV")});
  DestinationMarker::Marker marker{{{1, "me", "", "", {}, {}, {}}}};
  const auto record = [&](const std::string& path, const std::string& id) {
    marker.records[0].files.push_back({path, 1000, "digest", id, std::nullopt});
  };
  record("d/1.HEIC", "A/1.HEIC");
  record("d/1.MOV", "A/1.MOV");
  const auto plan = [&](FilesOnDisk files) {
    return TransferPlanner::plan({group}, {}, {std::move(files), RecordedFiles{marker, "me"}});
  };
  EXPECT_THAT(pathsOf(plan({{"d/1.HEIC", {0, {}}}, {"d/1.MOV", {1000, {}}}})),
              ElementsAre("d/1 (2).HEIC"));
  record("d/1 (2).HEIC", "A/1.HEIC");
  const auto next =
      plan({{"d/1.HEIC", {0, {}}}, {"d/1.MOV", {1000, {}}}, {"d/1 (2).HEIC", {1000, {}}}});
  EXPECT_THAT(pathsOf(next), IsEmpty());
  EXPECT_THAT(next.differing, IsEmpty());
  // The second copy can be emptied, too.
  EXPECT_THAT(
      pathsOf(plan({{"d/1.HEIC", {0, {}}}, {"d/1.MOV", {1000, {}}}, {"d/1 (2).HEIC", {0, {}}}})),
      ElementsAre("d/1 (3).HEIC"));
}

}  // namespace
}  // namespace tavrix
