#include "transfer/SafeNames.h"

#include <gmock/gmock.h>

#include "transfer/tests/TestLibrary.h"

namespace tavrix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(SafeNames, names_areChangedOnlyWhereTheyMustBe) {
  for (const auto& [name, safe] :
       std::vector<std::pair<std::string, std::string>>{{"IMG_1.HEIC", "IMG_1.HEIC"},
                                                        {".Tavrix-staging", ".Tavrix-staging"},
                                                        {" a (2).jpg", " a (2).jpg"},
                                                        {"a:b?.jpg", "a-b-.jpg"},
                                                        {"a.j?g", "a.j-g"},
                                                        {"50%\x01.jpg", "50--.jpg"},
                                                        {"name. ", "name"},
                                                        {"name.jpg.", "name.jpg"},
                                                        {"CON", "CON-"},
                                                        {"con.tar.gz", "con-.tar.gz"},
                                                        {"COM1.jpg", "COM1-.jpg"},
                                                        {"COM0.jpg", "COM0.jpg"},
                                                        {"Console.jpg", "Console.jpg"},
                                                        {"?", "-"},
                                                        {". .", "untitled"}}) {
    EXPECT_EQ(SafeNames::safeName(name), safe) << name;
    EXPECT_EQ(SafeNames::safeName(safe), safe) << name;
  }
  EXPECT_EQ(SafeNames::safePath("CON/a|b/c.jpg"), "CON-/a-b/c.jpg");
  const std::string longName = std::string(250, 'a') + ":.jpg";
  EXPECT_LE(SafeNames::safeName(longName).size(), 255U);
  EXPECT_TRUE(SafeNames::safeName(longName).ends_with(".jpg"));
}

TEST(SafeNames, partsOfOneSafeForm_differ) {
  EXPECT_NE(SafeNames::partPath("d/a:b.jpg"), SafeNames::partPath("d/a?b.jpg"));
  EXPECT_TRUE(SafeNames::partPath("d/a:b.jpg").starts_with("d/"));
  EXPECT_TRUE(SafeNames::partPath("d/a:b.jpg").ends_with(".part"));
}

std::vector<std::string> landedPaths(const TransferReport& report) {
  std::vector<std::string> paths;
  for (const FileOutcome& file : report.files) {
    paths.push_back(file.path.value_or("failed") + (file.hasSafeName ? " (safe)" : ""));
  }
  return paths;
}

class RefusedNamesTest : public testing::TestWithParam<int> {};

TEST_P(RefusedNamesTest, filesGetTheirSafeForm_andAreKnownOnTheNextRun) {
  const TemporaryFolder folder;
  FaultyFolder destination{openFolder(folder.path())};
  destination.faults().rule = refusingNames(GetParam());
  MemorySource source;
  source.threads = 3;
  const std::vector assets{assetOf("A/a:b.jpg"), assetOf("A/a?b.jpg"), assetOf("A/a-b.jpg"),
                           assetOf("A/c.jpg")};
  const auto group = groupOf("CON", assets);
  DestinationMarker::Marker marker{{{1, "me", "", "", {}, {}, {}}}};
  TransferEngine::Setup setup;
  setup.limits.files = 1;
  setup.landed = [&](const LandedFile& file) {
    DestinationMarker::FileRecord record{*file.outcome.path, file.outcome.bytesOnDisk, file.sha256,
                                         std::string{file.planned.asset.id()}, std::nullopt};
    record.hasSafeName = file.outcome.hasSafeName;
    marker.records[0].files.push_back(std::move(record));
  };
  const auto report =
      TransferEngine{setup}.run(TransferPlanner::plan({group}, {}), source, destination);
  EXPECT_THAT(report.failures, IsEmpty());
  EXPECT_EQ(filesIn(folder.path()),
            (std::vector<std::string>{"CON-/a-b (2).jpg", "CON-/a-b (3).jpg", "CON-/a-b.jpg",
                                      "CON-/c.jpg"}));
  for (const FileOutcome& file : report.files) {
    EXPECT_TRUE(file.hasSafeName) << file.name;
    EXPECT_EQ(folder.read(*file.path), contentOf(file.assetID, 1000));
  }
  // Through the form in which it is stored.
  marker.records[0] = *DestinationMarker::decode(DestinationMarker::encode(marker.records[0]));
  const auto again = TransferPlanner::plan(
      {group}, {}, {listFiles(destination).files, RecordedFiles{marker, "me"}});
  EXPECT_THAT(pathsOf(again), IsEmpty());
  // Without a record the bytes decide.
  EXPECT_EQ(TransferEngine{}.run(TransferPlanner::plan({group}, {}), source, destination).copied,
            0U);
}

INSTANTIATE_TEST_SUITE_P(Codes, RefusedNamesTest, testing::Values(EINVAL, ENOENT, EIO));

TEST(RefusedNames, filesOfOneShot_getTheSameNumber) {
  for (const int threads : {1, 4}) {
    const TemporaryFolder folder;
    FaultyFolder destination{openFolder(folder.path())};
    destination.faults().rule = refusingNames();
    // A foreign film has the safe name of the first shot's film; its picture's is free.
    folder.write("d/I-_1.MOV", "somebody's");
    MemorySource source;
    source.threads = threads;
    const auto plan = TransferPlanner::plan(
        {groupOf("d", {assetOf("A/I:_1.JPG"), assetOf("A/I:_1.MOV"), assetOf("A/I?_1.JPG"),
                       assetOf("A/I?_1.MOV"), assetOf("A/c:.JPG")})},
        {});
    const auto report = TransferEngine{{.limits = {.files = 1}}}.run(plan, source, destination);
    std::map<std::string, std::set<std::string>> stems;
    for (const FileOutcome& file : report.files) {
      const std::string id = file.assetID;
      stems[id.substr(0, id.rfind('.'))].insert(file.path->substr(0, file.path->rfind('.')));
    }
    EXPECT_THAT(stems, testing::Each(testing::Pair(testing::_, testing::SizeIs(1))));
    EXPECT_THAT(filesIn(folder.path()),
                ElementsAre("d/I-_1 (2).JPG", "d/I-_1 (2).MOV", "d/I-_1 (3).JPG", "d/I-_1 (3).MOV",
                            "d/I-_1.MOV", "d/c-.JPG"));
    EXPECT_EQ(TransferEngine{}.run(plan, source, destination).copied, 0U);
  }
}

TEST(RefusedNames, volumeThatRefusesOnlyTheFinalName_getsTheSafeOne) {
  const TemporaryFolder folder;
  FaultyFolder destination{openFolder(folder.path())};
  destination.faults().rule = [](FileOperation operation, const std::string& path) {
    if (operation == FileOperation::rename && path.ends_with("CON")) {
      throw FileError{operation, path, EINVAL};
    }
  };
  MemorySource source;
  const auto plan = TransferPlanner::plan({groupOf("d", {assetOf("A/CON"), assetOf("A/b")})}, {});
  EXPECT_THAT(landedPaths(TransferEngine{}.run(plan, source, destination)),
              ElementsAre("d/CON- (safe)", "d/b"));
}

TEST(RefusedNames, otherErrors_failTheFileUnderItsOwnName) {
  const TemporaryFolder folder;
  FaultyFolder destination{openFolder(folder.path())};
  destination.faults().rule = refusingNames(EACCES);
  MemorySource source;
  const auto plan = TransferPlanner::plan({groupOf("d", {assetOf("A/a:b.jpg")})}, {});
  const auto report = TransferEngine{}.run(plan, source, destination);
  EXPECT_THAT(landedPaths(report), ElementsAre("failed"));
  EXPECT_EQ(report.files[0].name, "a:b.jpg");
}

}  // namespace
}  // namespace tavrix
