// Runs whose destination is on a volume that goes: how long they wait, and what they go on with.

#include "model/tests/support/RunHarness.h"

namespace tavrix {
namespace {

using std::chrono::seconds;
using testing::IsEmpty;
using Status = TransferRecord::Status;

/// The folder of the destination stands for a mount point: a volume is a folder that is moved
/// there, and an empty folder takes its place when it goes.
struct AppModelVolumeTest : testing::Test, RunHarness {
  void SetUp() override {
    makeReady();
    fullCode = ENOTCONN;
  }
  void attach(const TemporaryFolder& volume) {
    std::filesystem::remove(destination.path());
    std::filesystem::rename(volume / "root", destination.path());
    isVolumeDetached = &volume != &first;
    writesUntilFull = -1;
  }
  /// The volume goes, and writes to it fail.
  void detach() {
    std::filesystem::rename(destination.path(), first / "root");
    std::filesystem::create_directory(destination.path());
    isVolumeDetached = true;
    writesUntilFull = 0;
  }
  void addFiles(int count) {
    for (int i = 0; i < count; ++i) phone.addFile(12 + i);
    plug();
    settle();
  }
  /// Transfers, and calls `event` during a file.
  void transferUntil(int number, const std::function<void()>& event) {
    phone.beforeFile = [number, event, count = 0]() mutable {
      if (++count == number) event();
    };
    transfer();
  }
  void loseAt(int number) {
    transferUntil(number, [this] { detach(); });
  }
  bool isAwaitingDestination() const {
    return isTransferring() && state().pause &&
           std::holds_alternative<run_pause::Destination>(*state().pause);
  }
  /// Requires an end of the run, after which another one completes.
  void checkNextRunCompletes(std::size_t files) {
    ASSERT_FALSE(isTransferring());
    EXPECT_EQ(record().status, Status::interrupted);
    model->leaveSummary();
    settle();
    transfer();
    EXPECT_EQ(record().status, Status::completed);
    checkWhole(files);
  }

  TemporaryFolder first;
  TemporaryFolder second;
};

TEST_F(AppModelVolumeTest, volumeThatGoes_isWaitedForAndTheRestIsCopied) {
  loseAt(5);
  ASSERT_TRUE(isTransferring());
  EXPECT_EQ(transferPausedReason(state(), Language::russian),
            "Папка назначения «" + destination.path() +
                "» недоступна: диск или сетевая папка отключились. Подключите — продолжу сам.");
  EXPECT_TRUE(log.has("transfer paused: destination gone"));
  passSeconds(60);
  ASSERT_TRUE(isTransferring());
  EXPECT_TRUE(std::filesystem::is_empty(destination.path())) << "nothing is written below it";
  attach(first);
  passSeconds(5);
  EXPECT_EQ(report().copied, 12);
  checkWhole(12);
  EXPECT_EQ(record().status, Status::completed);
  EXPECT_TRUE(log.has("transfer: destination is back — continuing"));
}

TEST_F(AppModelVolumeTest, volumeWithAnotherIdentity_isKnownByTheFilesOfTheRun) {
  addFiles(388);
  loseAt(390);
  std::filesystem::create_directory(second / "root");
  attach(second);
  passSeconds(5);
  ASSERT_TRUE(isAwaitingDestination()) << "an empty volume is not the one that went";
  EXPECT_THAT(filesOnDisk(), IsEmpty());
  std::filesystem::copy(first / "root", destination.path(),
                        std::filesystem::copy_options::recursive);
  passSeconds(5);
  ASSERT_FALSE(isTransferring());
  EXPECT_EQ(report().copied, 400);
  checkWhole(400);
}

TEST_F(AppModelVolumeTest, volumeThatGoesBeforeTheFirstFile_isKnownUnderAnotherIdentity) {
  for (const bool isPacked : {false, true}) {
    SCOPED_TRACE(isPacked);
    Settings settings = *state().settings;
    settings.layout.packAsZip = isPacked;
    model->changeSettings(settings);
    loseAt(1);
    ASSERT_TRUE(isAwaitingDestination());
    std::filesystem::copy(first / "root", second / "root",
                          std::filesystem::copy_options::recursive);
    std::filesystem::remove_all(first / "root");
    attach(second);
    passSeconds(5);
    ASSERT_FALSE(isTransferring());
    EXPECT_EQ(record().status, Status::completed);
    EXPECT_EQ(report().copied, 12);
    EXPECT_THAT(filesOnDisk(), testing::SizeIs(isPacked ? 1 : 12));
    model->leaveSummary();
    for (const auto& entry : std::filesystem::directory_iterator{destination.path()}) {
      std::filesystem::remove_all(entry.path());
    }
    model->refreshDestination();
    isVolumeDetached = false;
    settle();
  }
}

TEST_F(AppModelVolumeTest, filesThatTheRunOnlyFound_proveNoVolume) {
  Settings settings = *state().settings;
  settings.layout.onlyNew = false;
  model->changeSettings(settings);
  transfer();
  model->leaveSummary();
  addFiles(1);
  loseAt(1);
  // An older copy of the folder is on another volume.
  std::filesystem::copy(first / "root", second / "root", std::filesystem::copy_options::recursive);
  std::filesystem::remove(second /
                          ("root/" + DestinationMarker::fileName(phone.source().phone.hash)));
  attach(second);
  passSeconds(5);
  ASSERT_TRUE(isAwaitingDestination());
  checkWhole(12);
}

TEST_F(AppModelVolumeTest, volumeThatLostWhatLanded_endsTheRunInsteadOfCountingIt) {
  addFiles(388);
  loseAt(390);
  ASSERT_TRUE(isTransferring());
  // The names that were written last never reached the disk.
  std::string lost;
  for (const auto& entry : std::filesystem::recursive_directory_iterator{first.path()}) {
    if (entry.path().extension() == ".HEIC") lost = entry.path();
  }
  ASSERT_TRUE(std::filesystem::remove(lost));
  attach(first);
  passSeconds(5);
  checkNextRunCompletes(400);
}

TEST_F(AppModelVolumeTest, volumeThatCannotBeTold_isLeftToTheNextRun) {
  loseAt(5);
  // A record of the phone, but none of the run's files.
  second.write("root/" + DestinationMarker::fileName(phone.source().phone.hash),
               DestinationMarker::encode({1, phone.source().phone.hash, "iPhone", "", {}, {}, {}}));
  attach(second);
  passSeconds(5);
  checkNextRunCompletes(12);
}

TEST_F(AppModelVolumeTest, diskThatFailsButStays_isLookedAtAFewTimesAndNotWaitedFor) {
  fullCode = EIO;
  transferUntil(5, [this] { writesUntilFull = 0; });
  passSeconds(5);
  ASSERT_TRUE(isTransferring());
  EXPECT_EQ(state().pause, std::nullopt) << "there is nothing that a person could do";
  passSeconds(5);
  ASSERT_FALSE(isTransferring());
  EXPECT_EQ(record().status, Status::interrupted);
  EXPECT_EQ(model->run()->outcome.interruption->code(), EIO);
}

TEST_F(AppModelVolumeTest, diskThatIsPulled_mayFailBeforeTheSystemNotices) {
  fullCode = EIO;
  transferUntil(5, [this] { writesUntilFull = 0; });
  ASSERT_TRUE(isTransferring());
  detach();
  passSeconds(5);
  ASSERT_TRUE(isAwaitingDestination());
  attach(first);
  passSeconds(5);
  EXPECT_EQ(report().copied + report().resumedSkips, 12)
      << "the last ones were not sure to be there";
  checkWhole(12);
}

TEST_F(AppModelVolumeTest, volumeThatGoesDuringAnotherPause_isWaitedForAsWell) {
  fullCode = ENOSPC;
  transferUntil(5, [this] { writesUntilFull = 0; });
  ASSERT_TRUE(std::holds_alternative<run_pause::DiskFull>(*state().pause));
  detach();
  passSeconds(5);
  ASSERT_TRUE(isAwaitingDestination()) << "of a full disk";
  attach(first);
  // The phone leaves at once, and the volume while the phone is away.
  phone.filesUntilUnplugged = 0;
  passSeconds(5);
  ASSERT_TRUE(std::holds_alternative<run_pause::Phone>(*state().pause));
  detach();
  phone.isPlugged = true;
  phone.filesUntilUnplugged = -1;
  model->sourceGone();
  plug();
  settle();
  ASSERT_TRUE(isAwaitingDestination()) << "of a phone";
  attach(first);
  passSeconds(5);
  EXPECT_EQ(report().copied, 12);
  checkWhole(12);
}

TEST_F(AppModelVolumeTest, cancelWhileTheFolderIsOpenedAgain_leavesItFree) {
  loseAt(5);
  attach(first);
  loop.advance(seconds{5});
  while (loop.runOne()) {
  }
  ASSERT_TRUE(looking.runOne()) << "the look";
  while (loop.runOne()) {
  }
  ASSERT_EQ(looking.waiting(), 1) << "opening it again";
  model->cancelTransfer();
  EXPECT_TRUE(isTransferring()) << "until the folder is closed";
  bool wasFree = false;
  const auto subscription = model->subscribe([&](const StateChange&) {
    if (!isTransferring()) wasFree = !Destination::isBusy(destination.path());
  });
  settle();
  ASSERT_FALSE(isTransferring());
  EXPECT_EQ(record().status, Status::cancelled);
  EXPECT_TRUE(wasFree);
}

TEST_F(AppModelVolumeTest, archivesThatAreDone_arePartOfARunThatGoesOn) {
  Settings settings = *state().settings;
  settings.layout.packAsZip = true;
  settings.layout.packPerGroup = true;
  model->changeSettings(settings);
  freeWhenFull = 1'000'000;
  // Tries each third write of an undisturbed run as the last one.
  for (int last = 1;; last += 3) {
    SCOPED_TRACE(last);
    bool hasGone = false;
    whenFull = [&] {
      hasGone = true;
      detach();
    };
    writesUntilFull = last;
    transfer();
    if (!hasGone) {
      EXPECT_GT(last, 20);
      break;
    }
    ASSERT_TRUE(isAwaitingDestination());
    attach(first);
    passSeconds(5);
    ASSERT_FALSE(isTransferring());
    EXPECT_EQ(record().status, Status::completed);
    EXPECT_EQ(report().copied, 12);
    EXPECT_THAT(model->run()->outcome.unpackedFolders, IsEmpty());
    std::vector<std::string> names;
    for (const auto& [path, content] : filesOnDisk()) names.push_back(path);
    EXPECT_THAT(names, testing::ElementsAre("2026-05-20.zip", "2026-05-21.zip", "2026-05-22.zip",
                                            "2026-05-23.zip"));
    model->leaveSummary();
    for (const auto& entry : std::filesystem::directory_iterator{destination.path()}) {
      std::filesystem::remove_all(entry.path());
    }
    model->refreshDestination();
    settle();
  }
}

TEST_F(AppModelVolumeTest, waitForTheVolume_canBeCancelledAlsoIfALookDoesNotEnd) {
  loseAt(5);
  loop.advance(seconds{5});
  ASSERT_EQ(looking.waiting(), 1) << "a look that does not end holds up those behind it";
  model->cancelTransfer();
  while (loop.runOne() || background.runOne() || transferring.runOne() || storing.runOne()) {
  }
  ASSERT_FALSE(isTransferring());
  EXPECT_EQ(record().status, Status::cancelled);
}

}  // namespace
}  // namespace tavrix
