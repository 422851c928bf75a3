#include "runs/FolderTransfer.h"

#include <gmock/gmock.h>

#include <cerrno>

#include "foundation/tests/support/FaultyFolder.h"
#include "foundation/tests/support/TemporaryFolder.h"
#include "library/PlanSummary.h"
#include "runs/KnownCard.h"
#include "transfer/CopyVerification.h"
#include "transfer/TransferPlanner.h"

namespace tavrix {
namespace {

class TenByteSource : public MediaSource {
 public:
  void download(const MediaAsset&, DownloadDestination& destination) override {
    const std::string_view content = "0123456789";
    destination.append(std::as_bytes(std::span{content}));
  }
};

std::vector<MediaAsset> twoADay(int count) {
  std::vector<MediaAsset> assets;
  for (int i = 0; i < count; ++i) {
    const std::string name = fmt::format("IMG_{:04}.HEIC", i);
    assets.emplace_back(name, name, MediaAsset::Text{}, MediaKind::photo, 10U,
                        Instant{std::chrono::hours{24 * (i / 2)}}, std::nullopt, false,
                        MediaAsset::Text{}, MediaAsset::Text{});
  }
  return assets;
}

/// Runs that copy six stills of three days, in a folder that can inject errors.
struct FolderTransferTest : testing::Test {
  RunOutcome run(std::chrono::seconds step = std::chrono::seconds{0}) {
    const Library library = makeLibrary(twoADay(assets), {}, "en_US");
    std::vector<TransferPlanner::NamedGroup> groups;
    for (const auto& row : library.rows) groups.push_back({row.name, row.group});
    TransferOptions options;
    options.onlyNew = onlyNew;
    auto content = Destination::read(folder, phone);
    const TransferPlan plan = TransferPlanner::plan(groups, options, content.view);
    FolderTransfer::Setup setup;
    setup.phone = phone;
    setup.now = [&] { return time += step; };
    FolderTransfer job{setup, folder, std::move(content)};
    TenByteSource source;
    RunOutcome outcome = job.run(plan, source);
    tally = tallyOf(library, plan, *outcome.report);
    return outcome;
  }
  /// Makes every rename after the given number of landings fail, including that of the final save.
  void killAfter(int landings) {
    int renames = 0;
    folder.faults().rule = [=](FileOperation operation, const std::string& path) mutable {
      if (operation != FileOperation::rename) return;
      if (!path.starts_with("phone-")) ++renames;
      // Not an error of the volume itself, after which no file would count as landed.
      if (renames > landings) throw FileError{operation, path, ENOSPC};
    };
    EXPECT_EQ(run().report->copied, static_cast<std::uint64_t>(landings));
    folder.faults().rule = {};
  }
  DestinationMarker::PhoneRecord record() const {
    return *DestinationMarker::load(*openFolder(temporary.path())).record(phone.hash);
  }
  std::size_t claims() const {
    const auto files = record().files;
    return static_cast<std::size_t>(
        std::count_if(files.begin(), files.end(), [](const auto& file) { return file.isClaim(); }));
  }
  std::size_t missingFiles() const {
    const auto opened = openFolder(temporary.path());
    return CopyVerification::verify(*opened, listDestination(*opened), {})
        .count(CopyVerification::State::missing);
  }
  std::size_t rememberedFiles() const {
    const auto marker = DestinationMarker::load(*openFolder(temporary.path()));
    const auto* const record = marker.record(phone.hash);
    return record == nullptr ? 0 : record->files.size();
  }

  TemporaryFolder temporary;
  FaultyFolder folder{openFolder(temporary.path())};
  PhoneIdentity phone = snapshotPhone("iPhone");
  std::string markerName = DestinationMarker::fileName(phone.hash);
  Instant time{std::chrono::seconds{1779364800}};
  bool onlyNew = true;
  int assets = 6;
  TransferTally tally;
};

TEST_F(FolderTransferTest, longRun_remembersOnItsWay) {
  int savings = 0;
  folder.faults().rule = [&](FileOperation operation, const std::string& path) {
    if (operation == FileOperation::rename && path == markerName) ++savings;
  };
  run(std::chrono::seconds{11});
  EXPECT_GE(savings, 3);
  savings = 0;
  std::filesystem::remove_all(temporary / "1970-01-01");
  run(std::chrono::seconds{1});
  EXPECT_EQ(savings, 2);  // the claims before the run, the landed files after it
}

TEST_F(FolderTransferTest, runThatIsKilled_leavesNoFileThatAnotherPhoneTakesForItsOwn) {
  killAfter(3);
  const PhoneIdentity first = phone;
  phone = snapshotPhone("another");
  EXPECT_EQ(run().report->copied, 6U);
  phone = first;
  EXPECT_EQ(run().report->copied, 3U);
  EXPECT_EQ(rememberedFiles(), 6U);
}

TEST_F(FolderTransferTest, runAfterAKilledOne_knowsWhatItFoundFromWhatNeverCame) {
  killAfter(3);
  EXPECT_EQ(claims(), 6U);
  // Deletes one landed file before the next run and one after it.
  std::filesystem::remove(temporary / "1970-01-01/IMG_0000.HEIC");
  EXPECT_EQ(run().report->copied, 4U);
  EXPECT_EQ(claims(), 0U);
  EXPECT_EQ(rememberedFiles(), 6U);
  std::filesystem::remove(temporary / "1970-01-01/IMG_0001.HEIC");
  EXPECT_EQ(missingFiles(), 1U);
}

TEST_F(FolderTransferTest, planWithoutFiles_dropsWhatNeverCame) {
  killAfter(3);
  assets = 3;
  EXPECT_EQ(run().report->copied, 0U);
  EXPECT_EQ(claims(), 0U);
  EXPECT_EQ(rememberedFiles(), 3U);
  const std::string settled = temporary.read(markerName);
  run(std::chrono::seconds{5});
  EXPECT_EQ(temporary.read(markerName), settled);
}

TEST_F(FolderTransferTest, planWithoutFiles_recordsWhatAKilledRunHadLanded) {
  int savings = 0;
  folder.faults().rule = [&](FileOperation operation, const std::string& path) {
    if (operation == FileOperation::rename && path == markerName && ++savings > 1)
      throw FileError{operation, path, EIO};
  };
  EXPECT_EQ(run().report->copied, 6U);
  folder.faults().rule = {};
  EXPECT_EQ(claims(), 6U);
  EXPECT_EQ(run().report->copied, 0U);
  EXPECT_EQ(claims(), 0U);
  EXPECT_EQ(rememberedFiles(), 6U);
}

TEST_F(FolderTransferTest, killedRun_keepsTheDigestsOfWhatItFound) {
  run();
  onlyNew = false;
  assets = 8;
  killAfter(1);
  EXPECT_EQ(claims(), 2U);
  std::filesystem::remove(temporary / "1970-01-01/IMG_0000.HEIC");
  EXPECT_EQ(missingFiles(), 1U);
}

TEST_F(FolderTransferTest, closedFolder_keepsItsEntriesAndFailsItsFiles) {
  run();
  const auto before = record();
  folder.faults().rule = [](FileOperation operation, const std::string& path) {
    if (path.starts_with("1970-01-02")) throw FileError{operation, path, EACCES};
  };
  assets = 8;
  EXPECT_EQ(run().report->failures.size(), 2U);
  EXPECT_EQ(tally.copied, 2U);
  std::filesystem::remove(temporary / "1970-01-03/IMG_0004.HEIC");
  EXPECT_EQ(run().report->copied, 1U);
  folder.faults().rule = {};
  EXPECT_EQ(missingFiles(), 0U);
  EXPECT_EQ(rememberedFiles(), 8U);
  for (const auto& file : before.files) {
    EXPECT_THAT(record().files, testing::Contains(file)) << file.path;
  }
  EXPECT_EQ(run().report->files.size(), 0U);
  // A killed run must not lose them either.
  int savings = 0;
  folder.faults().rule = [&](FileOperation operation, const std::string& path) {
    if (path.starts_with("1970-01-02")) throw FileError{operation, path, EACCES};
    if (operation == FileOperation::rename && ++savings > 1) throw FileError{operation, path, EIO};
  };
  assets = 10;
  run();
  folder.faults().rule = {};
  for (const auto& file : before.files) EXPECT_THAT(record().files, testing::Contains(file));
}

TEST_F(FolderTransferTest, runThatLandsNothing_leavesTheMarkerAsItWas) {
  folder.faults().rule = failing(FileOperation::makeFolder, EACCES);
  EXPECT_EQ(run().report->failures.size(), 6U);
  EXPECT_FALSE(temporary.has(markerName));
  folder.faults().rule = {};
  run();
  const std::string before = temporary.read(markerName);
  std::filesystem::remove_all(temporary / "1970-01-01");
  folder.faults().rule = failing(FileOperation::makeFolder, EACCES);
  run(std::chrono::seconds{5});
  EXPECT_EQ(temporary.read(markerName), before);

  // A volume that has become read-only: nothing landed, so nothing is lost.
  folder.faults().rule = [](FileOperation operation, const std::string& path) {
    if (operation == FileOperation::create || operation == FileOperation::makeFolder)
      throw FileError{operation, path, EROFS};
  };
  const RunOutcome outcome = run();
  EXPECT_EQ(outcome.status, TransferRecord::Status::interrupted);
  EXPECT_FALSE(outcome.markerFailure.has_value());
}

TEST_F(FolderTransferTest, fullDisk_interruptsAndRemembersWhatLanded) {
  int files = 0;
  folder.faults().rule = [&](FileOperation operation, const std::string& path) {
    if (operation == FileOperation::create && path.ends_with(".HEIC.part") && ++files > 4) {
      throw FileError{operation, path, ENOSPC};
    }
  };
  const RunOutcome outcome = run();
  EXPECT_EQ(outcome.status, TransferRecord::Status::interrupted);
  ASSERT_TRUE(outcome.interruption.has_value());
  EXPECT_EQ(outcome.interruption->code(), ENOSPC);
  // The path is not that of a temporary file: the user must free space in the folder.
  EXPECT_EQ(outcome.interruption->path(), folder.path());
  EXPECT_EQ(rememberedFiles(), tally.copied);
  EXPECT_GT(tally.notReached, 0U);
  EXPECT_EQ(tally.planned, tally.copied + tally.failed + tally.notReached);

  folder.faults().rule = {};
  EXPECT_EQ(run().status, TransferRecord::Status::completed);
  EXPECT_EQ(tally.catalogue, tally.known + tally.planned);
  EXPECT_EQ(rememberedFiles(), 6U);
}

TEST_F(FolderTransferTest, recordThatCannotBeWritten_isToldWithTheReport) {
  folder.faults().rule = failing(FileOperation::rename, markerName, EACCES);
  const RunOutcome outcome = run(std::chrono::seconds{30});
  EXPECT_EQ(outcome.status, TransferRecord::Status::completed);
  EXPECT_EQ(tally.copied, 6U);
  ASSERT_TRUE(outcome.markerFailure.has_value());
  EXPECT_EQ(outcome.markerFailure->code(), EACCES);
}

TEST_F(FolderTransferTest, fileFoundInPlace_keepsTheDigestOfItsRecord) {
  run();
  const std::string digests = temporary.read(markerName);
  onlyNew = false;
  run();
  EXPECT_EQ(tally.alreadyThere, 6U);
  EXPECT_EQ(temporary.read(markerName), digests);
  EXPECT_THAT(digests, testing::HasSubstr("sha256"));
}

TEST(PlanSummary, foldersOfOneName_areCountedTogether) {
  Settings settings;
  settings.naming.datelessName = "x";
  settings.naming.nameTemplate = {{name_token::Year{}}, NameLanguage::english};
  settings.naming.mergeSameNames = true;
  const Library library = makeLibrary(twoADay(6), settings, "en_US");
  ASSERT_EQ(library.rows.size(), 3U);
  std::vector<TransferPlanner::NamedGroup> groups;
  for (const auto& row : library.rows) groups.push_back({row.name, row.group});
  TransferPlan plan = TransferPlanner::plan(groups, {});
  plan.skippedKnown = {plan.files[1].asset, plan.files[5].asset};
  plan.files = {plan.files[0], plan.files[2], plan.files[3], plan.files[4]};
  EXPECT_THAT(folderPlans(library.rows, plan), testing::ElementsAre(FolderPlan{"1970", 4, 40, 2}));
}

TEST(KnownCard, cardOfWhichHalfIsRecorded_isKnownByTheRecordThatHasMost) {
  const std::vector<MediaAsset> assets = twoADay(4);
  const Library library = makeLibrary(assets, {}, "en_US");
  std::vector<TransferPlanner::NamedGroup> groups;
  for (const auto& row : library.rows) groups.push_back({row.name, row.group});
  const TransferPlan plan = TransferPlanner::plan(groups, {});
  const auto recordOf = [&](const std::string& hash, std::size_t files) {
    DestinationMarker::PhoneRecord record;
    record.phoneHash = hash;
    record.label = "card " + hash;
    for (std::size_t i = 0; i < files; ++i) {
      const std::string id{assets[i].id()};
      record.files.push_back({"d/" + id, 10, std::nullopt, id, std::nullopt});
    }
    return record;
  };
  DestinationMarker::Marker marker{{recordOf("a", 1)}};
  EXPECT_EQ(findKnownCard(marker, "own", plan), std::nullopt);
  marker.records.push_back(recordOf("b", 2));
  EXPECT_EQ(findKnownCard(marker, "own", plan), (KnownCard{"card b", "b", 2, 4}));
  marker.records.push_back(recordOf("c", 3));
  marker.records.push_back(recordOf("d", 2));
  EXPECT_EQ(findKnownCard(marker, "own", plan), (KnownCard{"card c", "c", 3, 4}));
  EXPECT_EQ(findKnownCard(marker, "a", plan), std::nullopt) << "a card that is known by its own";
  EXPECT_EQ(findKnownCard(marker, "own", {}), std::nullopt);
}

TEST(Destination, paths_areApartOnlyWhenNeitherHoldsTheOther) {
  const TemporaryFolder temporary;
  temporary.write("phone/media/a", "");
  temporary.write("linked/snapshot.json", "");
  std::filesystem::create_directory_symlink(temporary / "phone/media", temporary / "linked/media");
  struct Row {
    std::string source;
    std::string destination;
    std::optional<DestinationError::Kind> expected;
  };
  using enum DestinationError::Kind;
  const std::vector<Row> rows{{"phone", "photos", std::nullopt},
                              {"phone", "phone2", std::nullopt},
                              {"phone", "phon", std::nullopt},
                              {"phone/", "phone/media", insideMedia},
                              {"phone", "phone/media/x/y", insideMedia},
                              {"phone", "phone/./out/../media/", insideMedia},
                              {"phone", "phone/out", insideMedia},
                              {"linked", "phone/media/x", insideMedia},
                              {"linked", "phone/out", std::nullopt},
                              {"phone", "phone", holdsSource},
                              {"phone", ".", holdsSource}};
  for (const Row& row : rows) {
    std::optional<DestinationError::Kind> found;
    try {
      Destination::checkApart(temporary / row.source, temporary / row.destination);
    } catch (const DestinationError& error) {
      found = error.kind();
    }
    EXPECT_EQ(found, row.expected) << row.destination;
  }
}

}  // namespace
}  // namespace tavrix
