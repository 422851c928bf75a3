// The runs of a model: what prevents them, what they pause for, and how they end.

#include "model/tests/support/RunHarness.h"

namespace tavrix {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using testing::IsEmpty;
using testing::SizeIs;

struct AppModelRunTest : testing::Test, RunHarness {};

TEST_F(AppModelRunTest, blockers_startNothing) {
  transfer();
  EXPECT_EQ(transferBlocker(state()), TransferBlocker::noDevice);
  plug();
  settle();
  transfer();
  EXPECT_EQ(transferBlocker(state()), TransferBlocker::noDestination);
  model->setDestination(destination.path());
  EXPECT_EQ(transferBlocker(state()), std::nullopt);
  model->includeNone();
  transfer();
  EXPECT_EQ(transferBlocker(state()), TransferBlocker::nothingSelected);
  model->closeOverlay();
  model->sourceGone();
  transfer();
  EXPECT_EQ(transferBlocker(state()), TransferBlocker::noDevice);
  EXPECT_TRUE(isBrowsing());
  EXPECT_THAT(filesOnDisk(), IsEmpty());
  EXPECT_THAT(records, IsEmpty());
}

TEST_F(AppModelRunTest, run_copiesWhatIsShownAndCheckedAlone) {
  makeReady();
  model->navigate(nav_selection::Month{2026, 5});
  model->toggleGroup("2026-05-20");
  transfer();  // the start waits for the display
  EXPECT_EQ(report().copied, 9);
  checkWhole(9);
  EXPECT_EQ(record().status, TransferRecord::Status::completed);
  EXPECT_EQ(record().totals.shots, 9) << "what was not checked is no part of the run";
  EXPECT_EQ(record().id, state().lastRecordID);
  EXPECT_EQ(state().knownFilesCount, 9);
  EXPECT_EQ(state().newFilesCount, 0);

  model->leaveSummary();
  EXPECT_TRUE(isBrowsing());
  transfer();
  EXPECT_EQ(transferBlocker(state()), TransferBlocker::nothingSelected);
  model->includeAll();
  transfer();
  EXPECT_EQ(report().copied, 3);
  checkWhole(12);
}

TEST_F(AppModelRunTest, runUnderWay_hasARecordAlready) {
  makeReady();
  phone.beforeFile = [this] {
    ASSERT_THAT(records, SizeIs(1));
    EXPECT_EQ(records.begin()->second.status, TransferRecord::Status::interrupted);
  };
  transfer();
  EXPECT_EQ(record().status, TransferRecord::Status::completed);
  EXPECT_THAT(records, SizeIs(1));
  EXPECT_EQ(state().progress, std::nullopt);
}

TEST_F(AppModelRunTest, sourceReadInPart_makesTheRunIncomplete) {
  ConnectedSource source = phone.source();
  source.unreadFolders = 2;
  model->sourceReady(std::move(source), data_origin::Device{"iPhone"});
  model->setDestination(destination.path());
  settle();
  transfer();
  EXPECT_EQ(report().copied, 12);
  EXPECT_EQ(record().status, TransferRecord::Status::completedWithFailures);
  EXPECT_THAT(record().notes, SizeIs(1));
}

TEST_F(AppModelRunTest, callerThatWantsARunWithoutFiles_getsOneWithItsRecord) {
  makeReady();
  model->setRunsWithoutFiles(true);
  transfer();
  model->leaveSummary();
  transfer();
  EXPECT_EQ(report().copied, 0);
  EXPECT_EQ(record().totals.alreadyThere, 12);
  EXPECT_THAT(records, SizeIs(2));
}

TEST_F(AppModelRunTest, failedFiles_areReportedAndPlannedAgain) {
  phone.broken = {"IMG_0004.HEIC"};
  makeReady();
  transfer();
  EXPECT_EQ(report().copied, 11);
  EXPECT_THAT(report().failures, SizeIs(1));
  EXPECT_EQ(record().status, TransferRecord::Status::completedWithFailures);
  model->leaveSummary();
  EXPECT_EQ(state().newFilesCount, 1);
  phone.broken = {};
  transfer();
  EXPECT_EQ(report().copied, 1);
  checkWhole(12);
}

TEST_F(AppModelRunTest, phoneUnplugged_pausesAndGoesOnByItself) {
  makeReady();
  phone.filesUntilUnplugged = 5;
  transfer();
  ASSERT_TRUE(isTransferring());
  EXPECT_EQ(transferPausedReason(state(), Language::russian),
            "iPhone отключён. Подключите кабель — продолжу сам.");
  checkWhole(5);
  EXPECT_EQ(state().progress->filesDone, 5U);
  model->sourceGone();
  loop.advance(seconds{60});
  settle();
  EXPECT_TRUE(isTransferring());
  EXPECT_THAT(*state().displayGroups, SizeIs(4)) << "nothing is cleared during a run";

  phone.isPlugged = true;
  phone.filesUntilUnplugged = -1;
  plug();
  EXPECT_EQ(transferPausedReason(state(), Language::russian), std::nullopt);
  std::uint64_t verified = 0;
  std::uint64_t bytesDone = 0;
  const auto subscription = model->subscribe([&](const StateChange& change) {
    if (!change.after.progress) return;
    verified = change.after.progress->verifiedCount;
    bytesDone = change.after.progress->bytesDone;
  });
  settle();
  EXPECT_EQ(verified, 12U) << "also the files from before the pause";
  EXPECT_EQ(bytesDone, 120U);
  EXPECT_EQ(report().bytesWritten, 120U);
  EXPECT_EQ(model->run()->outcome.phoneWaits, 1U);
  EXPECT_EQ(report().copied, 12);
  EXPECT_THAT(report().failures, IsEmpty());
  checkWhole(12);
  EXPECT_EQ(record().totals.onMac, 12);
  EXPECT_TRUE(log.has("transfer: groups are back — resuming"));
  EXPECT_THAT(records, SizeIs(1)) << "one run, one record";
}

TEST_F(AppModelRunTest, phoneBackBeforeAnybodyNoticed_goesOn) {
  makeReady();
  phone.filesUntilUnplugged = 5;
  transfer();
  phone.isPlugged = true;
  phone.filesUntilUnplugged = -1;
  loop.advance(seconds{1});
  settle();
  EXPECT_EQ(report().copied, 12);
  checkWhole(12);
}

TEST_F(AppModelRunTest, filesConvertedBeforeAPause_stayCounted) {
  struct Converter : MediaConverter {
    std::uint64_t convert(const MediaAsset&, const PlannedConversion&, Folder& folder,
                          const std::string&, const std::string& output, const ConversionProgress&,
                          std::stop_token) override {
      const auto file = folder.createFile(output);
      file->append(std::as_bytes(std::span{"jpeg", 4}));
      file->close();
      return 4;
    }
  } jpeg;
  converter = &jpeg;
  launch();
  Settings settings = *state().settings;
  settings.layout.photoJPEG = true;
  model->changeSettings(settings);
  makeReady();
  phone.filesUntilUnplugged = 5;
  transfer();
  ASSERT_TRUE(isTransferring());
  const auto landed = filesOnDisk();
  const auto before = static_cast<std::uint64_t>(std::count_if(
      landed.begin(), landed.end(), [](const auto& file) { return file.first.ends_with(".jpg"); }));
  EXPECT_GT(before, 0);
  phone.isPlugged = true;
  phone.filesUntilUnplugged = -1;
  std::vector<std::uint64_t> counts;
  const auto subscription = model->subscribe([&](const StateChange& change) {
    if (change.after.progress) counts.push_back(change.after.progress->convertedCount);
  });
  passSeconds(1);
  ASSERT_FALSE(isTransferring());
  EXPECT_THAT(counts, testing::Each(testing::Ge(before)));
  EXPECT_EQ(counts.back(), 9) << "every fourth file is a video";
}

TEST_F(AppModelRunTest, otherPhoneDuringThePause_isNotCopiedFrom) {
  makeReady();
  phone.filesUntilUnplugged = 5;
  transfer();
  model->sourceGone();
  FakePhone other{20, "Second"};
  model->sourceReady(other.source(), data_origin::Device{"Second"});
  loop.advance(seconds{30});
  settle();
  ASSERT_TRUE(isTransferring());
  checkWhole(5);
  model->cancelTransfer();
  settle();
  EXPECT_EQ(record().status, TransferRecord::Status::cancelled);
}

TEST_F(AppModelRunTest, phoneGoneOnTheSummary_isClearedWhenThatIsLeft) {
  makeReady();
  transfer();
  model->sourceGone();
  settle();
  EXPECT_THAT(*state().displayGroups, SizeIs(4));
  model->leaveSummary();
  EXPECT_THAT(*state().displayGroups, IsEmpty());
  EXPECT_TRUE(log.has("device gone during transfer screen: cleared catalog"));
}

TEST_F(AppModelRunTest, fullDisk_waitsForSpaceAndGoesOnByItself) {
  makeReady();
  writesUntilFull = 4;
  transfer();
  ASSERT_TRUE(isTransferring());
  ASSERT_TRUE(transferPausedReason(state(), Language::russian));
  EXPECT_EQ(
      *transferPausedReason(state(), Language::russian),
      "На диске нет места: нужно ещё 77\u00a0Б (свободно 3\u00a0Б). Освободите место — продолжу "
      "сам.");
  checkWhole(4);
  EXPECT_TRUE(log.has("transfer paused: disk full (free 3)"));
  loop.advance(seconds{20});
  settle();
  ASSERT_TRUE(isTransferring());
  writesUntilFull = -1;
  loop.advance(seconds{4});
  settle();
  ASSERT_TRUE(isTransferring()) << "it looks every five seconds";
  loop.advance(seconds{1});
  settle();
  EXPECT_EQ(report().copied, 12);
  checkWhole(12);
  EXPECT_EQ(record().status, TransferRecord::Status::completed);
  EXPECT_TRUE(log.has("transfer: space freed — continuing"));
}

TEST_F(AppModelRunTest, quotaThatIsUsedUp_isWaitedForLikeAFullDisk) {
  fullCode = EDQUOT;
  makeReady();
  writesUntilFull = 4;
  transfer();
  ASSERT_TRUE(isTransferring());
  writesUntilFull = -1;
  loop.advance(seconds{5});
  settle();
  EXPECT_EQ(report().copied, 12);
}

TEST_F(AppModelRunTest, diskThatIsFullOfOtherThanBytes_endsTheRunAfterAFewTries) {
  freeWhenFull = 1'000'000;
  makeReady();
  writesUntilFull = 6;
  transfer();
  for (int i = 0; i < 10 && isTransferring(); ++i) {
    EXPECT_EQ(transferPausedReason(state(), Language::russian), std::nullopt)
        << "there is nothing to free";
    loop.advance(seconds{5});
    settle();
  }
  ASSERT_FALSE(isTransferring());
  EXPECT_EQ(record().status, TransferRecord::Status::interrupted);
  EXPECT_EQ(model->run()->outcome.interruption->code(), ENOSPC);
  checkWhole(report().copied);
}

TEST_F(AppModelRunTest, destinationThatCannotBeReopened_isTheReasonInTheRecord) {
  makeReady();
  writesUntilFull = 6;
  transfer();
  ASSERT_TRUE(transferPausedReason(state(), Language::russian).has_value());
  EXPECT_FALSE(log.has("transfer failed (local fs): <private>")) << "a full disk is waited for";
  const auto marker = "phone-" + phone.source().phone.hash.substr(0, 8) + ".json";
  std::string content = destination.read(marker);
  content.replace(content.find("\"schemaVersion\": 1"), 18, "\"schemaVersion\": 99");
  destination.write(marker, content);
  writesUntilFull = -1;
  loop.advance(seconds{5});
  settle();
  ASSERT_FALSE(isTransferring());
  EXPECT_EQ(record().status, TransferRecord::Status::interrupted);
  EXPECT_THAT(record().notes, testing::Contains("Перенос остановлен: почему-то"));
  EXPECT_TRUE(log.has("transfer failed (local fs): <private>"));
}

TEST_F(AppModelRunTest, folderThatIsAnotherAfterThePause_isNotWrittenTo) {
  makeReady();
  writesUntilFull = 6;
  transfer();
  ASSERT_TRUE(transferPausedReason(state(), Language::russian).has_value());
  // As if another volume had been mounted there.
  const std::string away = destination.path() + ".away";
  std::filesystem::rename(destination.path(), away);
  std::filesystem::create_directories(destination.path());
  writesUntilFull = -1;
  loop.advance(seconds{5});
  settle();
  ASSERT_FALSE(isTransferring());
  EXPECT_EQ(record().status, TransferRecord::Status::interrupted);
  EXPECT_EQ(model->run()->outcome.interruption->code(), ENOENT);
  EXPECT_TRUE(std::filesystem::is_empty(destination.path()));
  std::filesystem::remove_all(away);
}

TEST_F(AppModelRunTest, whatChangesWhileAStartIsPrepared_isWhatIsTransferred) {
  makeReady();
  model->startTransfer();
  Settings settings = *state().settings;
  settings.gathering.granularity = UIGranularity::month;
  model->changeSettings(settings);
  while (loop.runOne() || background.runOne()) {
  }
  settle();
  EXPECT_EQ(report().copied, 12);
  for (const auto& [path, content] : filesOnDisk()) {
    EXPECT_THAT(path, testing::StartsWith("2026-05-20/")) << "the one folder on screen";
  }

  // A phone leaves, and another one is plugged in instead.
  model->leaveSummary();
  std::filesystem::remove_all(destination / "2026-05-20");
  model->refreshDestination();
  settle();
  model->startTransfer();
  model->sourceGone();
  EXPECT_EQ(transferBlocker(state()), TransferBlocker::noDevice);
  FakePhone other{3, "Second"};
  model->sourceReady(other.source(), data_origin::Device{"Second"});
  while (loop.runOne() || background.runOne()) {
  }
  model->startTransfer();
  settle();
  EXPECT_EQ(report().copied, 3);
  EXPECT_EQ(record().phoneName, "Second");
}

TEST_F(AppModelRunTest, destinationThatChangesWhileAStartIsPrepared_isTheOneWrittenTo) {
  makeReady();
  const TemporaryFolder other;
  model->startTransfer();
  model->setDestination(other.path());
  settle();
  EXPECT_EQ(report().copied, 12);
  EXPECT_THAT(filesOnDisk(), IsEmpty());
  EXPECT_TRUE(other.has("2026-05-20/IMG_0000.HEIC"));
}

TEST_F(AppModelRunTest, otherDestinationDuringARun_isBusyIfAnotherRunWritesThere) {
  makeReady();
  phone.filesUntilUnplugged = 5;
  transfer();
  ASSERT_TRUE(isTransferring());
  const TemporaryFolder other;
  const auto held = openFolder(other.path());
  ASSERT_TRUE(held->lock());
  model->setDestination(other.path());
  settle();
  EXPECT_TRUE(std::holds_alternative<destination_state::Busy>(state().destinationState));
}

TEST_F(AppModelRunTest, cancel_endsTheRunWhereverItIs) {
  struct Case {
    const char* name;
    std::function<void()> reach;
    std::size_t landed;
  };
  const std::vector<Case> cases{
      {"in the middle",
       [&] {
         phone.beforeFile = [this, count = 0]() mutable {
           if (++count == 6) model->cancelTransfer();
         };
         transfer();
       },
       5},
      {"waiting for the phone",
       [&] {
         phone.filesUntilUnplugged = 5;
         transfer();
         model->cancelTransfer();
         settle();
       },
       5},
      {"waiting for space",
       [&] {
         writesUntilFull = 3;
         transfer();
         model->cancelTransfer();
         settle();
       },
       3},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    std::filesystem::remove_all(destination.path());
    std::filesystem::create_directory(destination.path());
    launch();
    phone.isPlugged = true;
    phone.filesUntilUnplugged = -1;
    phone.beforeFile = nullptr;
    writesUntilFull = -1;
    makeReady();
    each.reach();
    ASSERT_FALSE(isTransferring());
    EXPECT_EQ(report().copied, each.landed);
    EXPECT_EQ(record().status, TransferRecord::Status::cancelled);
    EXPECT_THAT(record().notes, testing::Contains("Перенос отменён."));
    checkWhole(each.landed);
  }
}

TEST_F(AppModelRunTest, cancelWhileTheStartIsPrepared_startsNothing) {
  makeReady();
  model->startTransfer();
  model->cancelTransfer();
  settle();
  EXPECT_TRUE(isBrowsing());
  EXPECT_THAT(filesOnDisk(), IsEmpty());
  transfer();
  EXPECT_EQ(report().copied, 12);
}

TEST_F(AppModelRunTest, questionAboutReducedCopies_isAskedAtEveryPress) {
  phone.addFile(12, true);
  makeReady();
  transfer();
  EXPECT_TRUE(optimizedConfirmPresented(state()));
  EXPECT_TRUE(isBrowsing());
  model->closeOverlay();
  transfer();
  EXPECT_TRUE(optimizedConfirmPresented(state()));
  model->skipOptimizedAndTransfer();
  settle();
  EXPECT_EQ(report().copied, 12);
  EXPECT_EQ(state().optimizedSkipped, 1);
  EXPECT_EQ(record().totals.optimized, 1);

  model->leaveSummary();
  Settings settings = *state().settings;
  settings.content.skipOptimized = false;
  model->changeSettings(settings);
  transfer();
  model->transferEverything();
  settle();
  EXPECT_EQ(report().copied, 1);
  EXPECT_EQ(state().optimizedSkipped, 0);
  checkWhole(13);
}

TEST_F(AppModelRunTest, destination_isFreeForOthersAsSoonAsAQuestionIsAsked) {
  phone.addFile(12, true);
  makeReady();
  model->startTransfer();
  while (transferring.runOne() || loop.runOne()) {
  }
  ASSERT_TRUE(optimizedConfirmPresented(state()));
  EXPECT_FALSE(Destination::isBusy(destination.path())) << "also while the background is busy";
}

TEST_F(AppModelRunTest, reducedCopiesThatAreSkipped_goWithTheShotsOfTheirEvents) {
  // Each event begins on the evening before the day that names its folder when these copies are
  // skipped.
  phone.addFile(20, true, 24 * 10 + 23);
  phone.addFile(21, false, 24 * 11 + 1);
  phone.addFile(22, true, 24 * 20 + 23);
  phone.addFile(24, false, 24 * 21 + 1);
  makeReady();
  Settings settings = *state().settings;
  settings.gathering.uiMode = UIGroupingMode::events;
  settings.content.skipOptimized = true;
  model->changeSettings(settings);
  settle();
  EXPECT_EQ(state().optimizedCount, 2);
  model->toggleGroup("event-2026-05-31");
  settle();
  EXPECT_EQ(state().optimizedCount, 1);
  transfer();
  EXPECT_EQ(state().optimizedSkipped, 1);
  EXPECT_EQ(record().totals.optimized, 1);
  const auto& shots = record().folders.back().shots;
  ASSERT_THAT(shots, SizeIs(2));
  EXPECT_EQ(shots[0].name + " " + shots[1].name, "IMG_0022.HEIC IMG_0024.HEIC");
  model->leaveSummary();
  model->includeNone();
  settle();
  EXPECT_EQ(state().optimizedCount, 0);
}

TEST_F(AppModelRunTest, destinationThatCannotBeOpened_isToldAndNothingStarts) {
  makeReady();
  model->setDestination(destination / "a/b");
  settle();
  transfer();
  EXPECT_TRUE(isBrowsing());
  const auto* const failure = state().overlay.as<overlay::StartFailure>();
  ASSERT_NE(failure, nullptr);
  EXPECT_THROW(std::rethrow_exception(failure->error), DestinationError);
}

TEST_F(AppModelRunTest, recordThatCannotBeWritten_failsNothing) {
  keepsRecords = false;
  makeReady();
  transfer();
  EXPECT_EQ(report().copied, 12);
  EXPECT_EQ(state().lastRecordID, std::nullopt);
}

TEST_F(AppModelRunTest, changesDuringARun_doNotTouchIt) {
  makeReady();
  phone.beforeFile = [this, count = 0]() mutable {
    if (++count != 3) return;
    Settings settings = *state().settings;
    settings.gathering.granularity = UIGranularity::year;
    model->changeSettings(settings);
    model->includeNone();
  };
  transfer();
  EXPECT_EQ(report().copied, 12);
  checkWhole(12);
  for (const auto& [path, content] : filesOnDisk()) {
    EXPECT_THAT(path, testing::StartsWith("2026-05-2")) << "the folders of the start";
  }
}

TEST_F(AppModelRunTest, packing_endsWithArchivesAndNothingElse) {
  Settings settings = *state().settings;
  settings.layout.packAsZip = true;
  settings.layout.packPerGroup = true;
  model->changeSettings(settings);
  makeReady();
  bool hasPacked = false;
  const auto subscription = model->subscribe([&](const StateChange& change) {
    const auto& progress = change.after.progress;
    hasPacked = hasPacked || (progress && progress->stage == TransferStage::packing);
  });
  transfer();
  EXPECT_EQ(report().copied, 12);
  EXPECT_TRUE(hasPacked);
  std::vector<std::string> names;
  for (const auto& [path, content] : filesOnDisk()) names.push_back(path);
  EXPECT_THAT(names, testing::ElementsAre("2026-05-20.zip", "2026-05-21.zip", "2026-05-22.zip",
                                          "2026-05-23.zip"));
  EXPECT_EQ(record().totals.onMac, 12);
}

}  // namespace
}  // namespace tavrix
