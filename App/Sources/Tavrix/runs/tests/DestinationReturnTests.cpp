#include "runs/DestinationReturn.h"

#include <gmock/gmock.h>

#include <cerrno>

#include "foundation/tests/support/FaultyFolder.h"
#include "foundation/tests/support/TemporaryFolder.h"

namespace tavrix {
namespace {

using State = DestinationLook::State;

constexpr Instant started{std::chrono::hours{1000}};

/// A destination to which a run has copied "a/1", and beside which it has found "a/2".
struct DestinationReturn : testing::Test {
  void SetUp() override {
    folder.write("a/1", "1");
    folder.write("a/2", "22");
    record(started);
    TransferPlan plan;
    plan.knownPaths = {"a/2"};
    TransferReport report;
    report.files.push_back({"1", "1", "a/1", 1, FileOutcome::Copied{}});
    destination = {.path = folder.path(),
                   .place = folder.path(),
                   .identity = folderIdentity(folder.path()),
                   .phoneHash = hash,
                   .startedAt = started,
                   .report = std::move(report),
                   .plan = std::make_shared<const TransferPlan>(std::move(plan))};
  }
  void record(Instant last) {
    DestinationMarker::save(*openFolder(folder.path()), {1, hash, "", "", last, last, {}, {}});
  }
  void copyNothing() { destination.report = TransferReport{}; }
  /// The volume has other numbers than when the run began.
  void renumber() { destination.identity = FolderIdentity{1, 1}; }
  State look() const {
    return lookFor(destination,
                   {.openExisting = [this](const std::string& path) -> std::unique_ptr<Folder> {
                      auto opened = Destination::openExisting(path);
                      if (opened == nullptr) return nullptr;
                      auto faulty = std::make_unique<FaultyFolder>(std::move(opened));
                      faulty->faults().rule = rule;
                      return faulty;
                    },
                    .isVolumeAway = [this](const auto&, const auto&) { return isDetached; }})
        .state;
  }

  const std::string hash = std::string(64, 'a');
  TemporaryFolder folder;
  WrittenDestination destination;
  bool isDetached = false;
  FaultRule rule{};
};

TEST_F(DestinationReturn, folderWithTheFilesAndTheRecordOfTheRun_isThere) {
  EXPECT_EQ(look(), State::there);
  renumber();
  EXPECT_EQ(look(), State::there) << "some volumes number their folders anew at each mount";
  isDetached = true;
  EXPECT_EQ(look(), State::there);
}

TEST_F(DestinationReturn, otherCopyOfTheFolder_isNotTheOneOfTheRun) {
  record(started - std::chrono::hours{24});
  EXPECT_EQ(look(), State::changed) << "also if it has the numbers of the first one";
  renumber();
  EXPECT_EQ(look(), State::changed);
  copyNothing();
  EXPECT_EQ(look(), State::changed);
}

TEST_F(DestinationReturn, missingOrShorterFile_isNotPassedOver) {
  folder.write("a/1", "");
  EXPECT_EQ(look(), State::changed);
  folder.write("a/1", "1");
  std::filesystem::remove(folder / "a/2");
  EXPECT_EQ(look(), State::changed);
}

TEST_F(DestinationReturn, runThatHasCopiedNothing_goesByTheNumbersOrItsStagedFiles) {
  copyNothing();
  std::filesystem::remove(folder / DestinationMarker::fileName(hash));
  EXPECT_EQ(look(), State::there);
  renumber();
  EXPECT_EQ(look(), State::gone) << "the volume is there, and the folder is another one";
  isDetached = true;
  EXPECT_EQ(look(), State::away);
  destination.isPacked = true;
  folder.write(".Tavrix-staging/a/1.part", "");
  EXPECT_EQ(look(), State::there);
}

TEST_F(DestinationReturn, fileInAnArchive_isThereIfTheArchiveIs) {
  TransferReport report;
  report.files.push_back({"1", "1", "a.zip/a/1", 1, FileOutcome::Copied{}});
  report.files.push_back({"2", "2", "a.zip/a/2", 9, FileOutcome::Copied{}});
  destination.report = std::move(report);
  destination.isPacked = true;
  EXPECT_EQ(look(), State::changed);
  folder.write("a.zip", "archive");
  EXPECT_EQ(look(), State::there);
}

TEST_F(DestinationReturn, folderThatIsNotThere_isAwayWithItsVolumeOrGone) {
  std::filesystem::remove_all(folder.path());
  EXPECT_EQ(look(), State::gone);
  isDetached = true;
  EXPECT_EQ(look(), State::away);
}

TEST_F(DestinationReturn, volumeThatCannotBeRead_isFailingOrAway) {
  for (const FileOperation operation :
       {FileOperation::list, FileOperation::status, FileOperation::read}) {
    isDetached = false;
    rule = failing(operation, ENOTCONN);
    EXPECT_EQ(look(), State::away);
    rule = failing(operation, EIO);
    EXPECT_EQ(look(), State::failing);
    isDetached = true;
    EXPECT_EQ(look(), State::away);
  }
}

}  // namespace
}  // namespace tavrix
