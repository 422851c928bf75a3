#include "history/RecordBuilding.h"

#include <gmock/gmock.h>

#include "transfer/tests/TestLibrary.h"

namespace tavrix {
namespace {

using Record = TransferRecord;
using testing::ElementsAre;

/// A run of shots in folders; the plan has some of the files.
struct TestRun {
  std::vector<Record::ShotInput> shots;
  TransferPlan plan;
  TransferReport report;

  AssetBundle add(const std::string& folder, const std::vector<std::string>& files) {
    std::vector<MediaAsset> assets;
    for (const std::string& file : files) assets.push_back(assetOf(file));
    const AssetBundle bundle = BundleBuilder::makeBundles(assets).at(0);
    shots.push_back({bundle, folder, std::nullopt});
    return bundle;
  }
  void planFile(const AssetBundle& bundle, std::size_t index) {
    const MediaAsset& asset = bundle.assets()[index];
    plan.files.push_back(
        {asset, "d/" + std::string{asset.name()}, {}, bundle.isPicture(asset), bundle});
  }
  void end(const AssetBundle& bundle, std::size_t index, FileOutcome::Kind kind,
           std::optional<std::string> path = "d/saved") {
    planFile(bundle, index);
    const MediaAsset& asset = bundle.assets()[index];
    report.files.push_back(
        {std::string{asset.id()}, std::string{asset.name()}, std::move(path), 7, std::move(kind)});
  }
  void know(const AssetBundle& bundle, std::size_t index, const std::string& path) {
    plan.skippedKnown.push_back(bundle.assets()[index]);
    plan.knownPaths.push_back(path);
  }
  Record record() const {
    FinishedRun run{.shots = shots, .plan = plan, .report = report};
    return makeRecord(std::move(run));
  }
};

std::vector<std::string> statesOf(const Record::Shot& shot) {
  std::vector<std::string> states{std::string{textOf(shot.outcome)}};
  for (const Record::File& file : shot.files) {
    states.push_back(std::string{textOf(file.role)} + " " + std::string{textOf(file.state)});
  }
  return states;
}

TEST(RecordBuilding, livePhotoWithItsFilmOff_isOnTheMac) {
  TestRun run;
  const AssetBundle live = run.add("d", {"1/IMG_1.HEIC", "1/IMG_1.MOV"});
  run.end(live, 0, FileOutcome::Copied{});
  const Record record = run.record();
  const Record::Shot& shot = record.folders.at(0).shots.at(0);
  EXPECT_THAT(statesOf(shot), ElementsAre("onMac", "original onMac", "liveVideo off"));
  EXPECT_EQ(shot.kind, Record::ShotKind::livePhoto);
  EXPECT_EQ(record.totals, (Record::Totals{.shots = 1, .onMac = 1, .bytesWritten = 7}));
  EXPECT_EQ(shot.files[0].path, "d/saved");
  EXPECT_EQ(shot.files[0].savedName, "saved");
}

TEST(RecordBuilding, shot_goesByTheWorstOfItsFiles) {
  TestRun run;
  const auto names = [](int number) {
    const std::string stem = "1/IMG_" + std::to_string(number);
    return std::vector<std::string>{stem + ".HEIC", stem + ".MOV", stem + ".AAE"};
  };
  const AssetBundle failed = run.add("a", names(1));
  run.end(failed, 0, FileOutcome::Copied{});
  run.end(failed, 1, FileOutcome::Failed{"нет файла", {.code = "notInSource"}}, std::nullopt);
  run.planFile(failed, 2);
  const AssetBundle unreached = run.add("a", names(2));
  run.end(unreached, 0, FileOutcome::Copied{});
  run.planFile(unreached, 1);
  const AssetBundle completed = run.add("b", names(3));
  run.know(completed, 0, "d/IMG_3.HEIC");
  run.end(completed, 1, FileOutcome::KeptOriginal{});
  const AssetBundle known = run.add("a", names(4));
  run.know(known, 0, "d/IMG_4 (2).HEIC");
  run.end(known, 1, FileOutcome::AlreadyThere{});
  run.add("c", {"1/IMG_5.JPG"});

  const Record record = run.record();
  ASSERT_EQ(record.folders.size(), 3U);
  const auto& a = record.folders[0].shots;
  EXPECT_THAT(statesOf(a[0]),
              ElementsAre("failed", "original onMac", "liveVideo failed", "sidecar notReached"));
  EXPECT_EQ(a[0].files[1].reason, "нет файла");
  EXPECT_EQ(a[0].files[1].reasonCode, ReasonCode{.code = "notInSource"});
  EXPECT_EQ(a[0].files[1].savedName, std::nullopt);
  EXPECT_EQ(a[0].files[1].bytes, 1000U) << "of the file on the phone";
  EXPECT_THAT(statesOf(a[1]),
              ElementsAre("notReached", "original onMac", "liveVideo notReached", "sidecar off"));
  EXPECT_THAT(statesOf(record.folders[1].shots[0]),
              ElementsAre("onMac", "original alreadyThere", "liveVideo onMac", "sidecar off"));
  EXPECT_TRUE(record.folders[1].shots[0].files[1].keptOriginal);
  EXPECT_THAT(statesOf(a[2]), ElementsAre("alreadyThere", "original alreadyThere",
                                          "liveVideo alreadyThere", "sidecar off"));
  EXPECT_EQ(a[2].files[0].path, "d/IMG_4 (2).HEIC");
  EXPECT_EQ(a[2].files[0].savedName, "IMG_4 (2).HEIC");
  EXPECT_THAT(statesOf(record.folders[2].shots[0]), ElementsAre("optimized", "original off"));

  const Record::Totals& totals = record.totals;
  EXPECT_EQ(totals, (Record::Totals{5, 1, 1, 1, 1, 21}));
  EXPECT_EQ(totals.notReached(), 1U);
}

TEST(RecordBuilding, shot_hasDateAndPositionOfItsPicture) {
  const Instant taken{std::chrono::hours{24 * 365}};
  const MediaAsset asset{"1/A.JPG",    "A.JPG",     std::nullopt,         MediaKind::photo,
                         7U,           taken,       GeoPoint{41.9, 12.5}, false,
                         std::nullopt, std::nullopt};
  TestRun run;
  run.shots.push_back({BundleBuilder::makeBundles({asset}).at(0), "d", std::nullopt});
  const Record::Shot shot = run.record().folders.at(0).shots.at(0);
  EXPECT_EQ(shot.captureDate, taken);
  EXPECT_EQ(shot.latitude, 41.9);
  EXPECT_EQ(shot.longitude, 12.5);
}

TEST(RecordBuilding, folder_hasThePlaceOfItsFirstShotThatHasOne) {
  TestRun run;
  for (const char* const name : {"1/A.JPG", "1/B.JPG", "1/C.JPG"}) run.add("d", {name});
  run.shots[1].place = Record::Place{{{"en", "Rome"}}, "IT", 41.9, 12.5};
  run.shots[2].place = Record::Place{{{"en", "Oslo"}}, "NO", 59.9, 10.7};
  EXPECT_EQ(run.record().folders.at(0).place, run.shots[1].place);
}

TEST(RecordBuilding, filter_keepsOnlyWhatItShows) {
  TestRun run;
  run.end(run.add("a", {"1/A.JPG"}), 0, FileOutcome::Copied{});
  run.end(run.add("a", {"1/B.JPG"}), 0, FileOutcome::Failed{"x"}, std::nullopt);
  run.end(run.add("b", {"1/C.MOV"}), 0, FileOutcome::Copied{});
  const Record failures = filtered(run.record(), Record::OutcomeFilter::failed);
  ASSERT_EQ(failures.folders.size(), 1U);
  ASSERT_EQ(failures.folders[0].shots.size(), 1U);
  EXPECT_EQ(failures.folders[0].shots[0].name, "B.JPG");
  EXPECT_EQ(failures.totals.shots, 3U);
  EXPECT_EQ(filtered(run.record(), Record::OutcomeFilter::all), run.record());
}

}  // namespace
}  // namespace tavrix
