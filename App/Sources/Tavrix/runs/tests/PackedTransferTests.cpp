#include "runs/PackedTransfer.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <map>

#include "foundation/Sentences.h"
#include "foundation/tests/support/LosingFolder.h"
#include "foundation/tests/support/RecordingLog.h"
#include "foundation/tests/support/TemporaryFolder.h"
#include "library/PlanSummary.h"
#include "media/BundleBuilder.h"
#include "runs/RunRecording.h"
#include "runs/SpaceWait.h"
#include "runs/StagedFiles.h"
#include "runs/Staging.h"
#include "transfer/CopyVerification.h"
#include "transfer/TransferPlanner.h"

namespace tavrix {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Status = TransferRecord::Status;

class NameSource : public MediaSource {
 public:
  /// The content of every file is its own name, so that files cannot be confused.
  void download(const MediaAsset& asset, DownloadDestination& destination) override {
    if (asset.name() == missing) throw SourceError{SourceError::Kind::notFound, missing};
    destination.append(std::as_bytes(std::span{asset.name()}));
  }
  std::string missing;
};

std::vector<MediaAsset> assetsOf(int count, const std::string& firstName = {}) {
  std::vector<MediaAsset> assets;
  for (int i = 0; i < count; ++i) {
    const std::string name =
        i == 0 && !firstName.empty() ? firstName : fmt::format("IMG_{:04}.HEIC", i);
    assets.emplace_back(name, name, MediaAsset::Text{}, MediaKind::photo, name.size(),
                        Instant{std::chrono::hours{24 * (i / 2)}}, std::nullopt, false,
                        MediaAsset::Text{}, MediaAsset::Text{});
  }
  return assets;
}

/// Runs that pack six stills of three days, in a folder that can inject errors or lose what is not
/// synced.
struct PackingBench {
  TransferPlan planOf(const Library& library, const DestinationView& view) const {
    std::vector<TransferPlanner::NamedGroup> groups;
    for (const auto& row : library.rows) groups.push_back({row.name, row.group});
    TransferOptions options;
    options.container = TransferOptions::Container::zipPerGroup;
    return TransferPlanner::plan(groups, options, view);
  }
  RunOutcome run() {
    const Library library = makeLibrary(assetsOf(assets, firstName), {}, "en_US");
    auto content = Destination::read(folder, phone);
    const TransferPlan plan = planOf(library, content.view);
    auto leftOvers = Staging::settleLeftOvers(folder, content.view.filesOnDisk(), plan);
    PackedTransfer::Setup setup;
    setup.phone = phone;
    setup.packing = {isPerGroup, false, "iPhone 2026-05-21"};
    setup.log = &log;
    setup.now = [&] { return time; };
    setup.spaceWait.paused = [&](const auto& shortage) { pauses.push_back(shortage); };
    setup.spaceWait.sleep = [&](auto, const auto&) {
      if (slept) slept();
    };
    PackedTransfer job{std::move(setup), folder, std::move(content)};
    RunOutcome outcome = job.run(
        plan, source, [&](const auto& snapshot) { snapshots.push_back(snapshot); },
        stop.get_token());
    tally = tallyOf(library, plan, *outcome.report);
    EXPECT_EQ(tally.planned, tally.copied + tally.keptOriginal + tally.failed + tally.notReached);
    EXPECT_EQ(outcome.report->copied, tally.copied);
    outcome.leftOvers = std::move(leftOvers);
    return outcome;
  }
  /// Returns the content of all files in the destination, except the marker's. Files in an archive
  /// are listed by their names in it.
  std::map<std::string, std::string> files() const {
    std::map<std::string, std::string> files;
    openFolder(temporary.path())->visitAll([&](const std::string& path, const FileStatus& status) {
      if (status.type != FileStatus::Type::file || DestinationMarker::isOwnFile(path)) return;
      if (path.ends_with(".zip")) {
        for (const auto& [name, content] : unzipped(path)) files[path + "/" + name] = content;
      } else {
        files[path] = temporary.read(path);
      }
    });
    return files;
  }
  std::map<std::string, std::string> unzipped(const std::string& path) const {
    const TemporaryFolder out;
    const std::string command =
        "unzip -q '" + temporary / path + "' -d '" + out.path() + "' > /dev/null 2>&1";
    EXPECT_EQ(std::system(command.c_str()), 0) << path;
    std::map<std::string, std::string> files;
    for (const auto& each : std::filesystem::recursive_directory_iterator{out.path()}) {
      if (!each.is_regular_file()) continue;
      const auto name = std::filesystem::relative(each.path(), out.path()).string();
      files[name] = out.read(name);
    }
    return files;
  }
  /// Checks that the report agrees with the disk.
  void expectTruth(const RunOutcome& outcome) const {
    const auto onDisk = files();
    std::map<std::string, std::string> told;
    for (const FileOutcome& file : outcome.report->files) {
      if (file.path) told[*file.path] = file.assetID;
    }
    EXPECT_EQ(onDisk, told);
    EXPECT_FALSE(temporary.has(".Tavrix-staging"));
  }
  std::uint64_t count(CopyVerification::State state) const {
    const auto opened = openFolder(temporary.path());
    return CopyVerification::verify(*opened, listDestination(*opened), {}).count(state);
  }
  std::vector<std::string> linesWith(const std::string& text) const {
    std::vector<std::string> lines;
    for (const std::string& line : log.lines()) {
      if (line.find(text) != std::string::npos) lines.push_back(line);
    }
    return lines;
  }

  TemporaryFolder temporary;
  LosingFolder folder{openFolder(temporary.path())};
  PhoneIdentity phone = snapshotPhone("iPhone");
  Instant time{std::chrono::seconds{1779364800}};
  NameSource source;
  RecordingLog log{true};
  std::vector<std::optional<run_pause::DiskFull>> pauses;
  std::function<void()> slept;
  std::stop_source stop;
  std::vector<TransferProgressSnapshot> snapshots;
  bool isPerGroup = true;
  int assets = 6;
  std::string firstName;
  TransferTally tally;
};

struct PackedTransferTest : testing::Test, PackingBench {};

TEST(ArchivePlan, everyFile_isInOneArchive) {
  const Library library = makeLibrary(assetsOf(5), {}, "en_US");
  std::vector<TransferPlanner::NamedGroup> groups;
  // The same folder name twice, with another one between.
  for (const std::size_t row : {0U, 1U, 2U}) {
    groups.push_back({row == 1 ? "Rome" : "1970", library.rows[row].group});
  }
  const TransferPlan plan = TransferPlanner::plan(groups, {});
  EXPECT_THAT(plannedArchives(plan, {true, false, "all"}),
              ElementsAre(PlannedArchive{"1970", "1970.zip", {0, 1, 4}},
                          PlannedArchive{"Rome", "Rome.zip", {2, 3}}));
  const PlannedArchive whole{std::nullopt, "all.zip", {0, 1, 2, 3, 4}};
  EXPECT_THAT(plannedArchives(plan, {false, false, "all"}), ElementsAre(whole));
  EXPECT_THAT(plannedArchives(plan, {true, true, "all"}), ElementsAre(whole));
  EXPECT_THAT(plannedArchives({}, {false, false, "all"}), IsEmpty());
}

TEST(ArchivePlan, namesThatCouldLeadElsewhere_areMadeSafeAndStayDifferent) {
  EXPECT_THAT(
      entryNames({"d/a-b.jpg", "d/a\\b.jpg", "d/A\nB.jpg", "d/c:\xFF.jpg", "d/c.jpg"}),
      ElementsAre("d/a-b.jpg", "d/a-b (2).jpg", "d/A-B (3).jpg", "d/c-\uFFFD.jpg", "d/c.jpg"));
  const std::vector<std::string> safe{"C/:.jpg", "d/Ёжик 🦔?.jpg"};
  EXPECT_EQ(entryNames(safe), safe);
}

TEST(ArchivePlan, settings_sayIntoHowManyArchivesARunGoes) {
  const CivilDate day{std::chrono::year{2026}, std::chrono::May, std::chrono::day{21}};
  Settings settings;
  EXPECT_EQ(packingOf(settings, "iPhone", day), std::nullopt);
  settings.layout.packAsZip = true;
  EXPECT_EQ(packingOf(settings, "a/b", day), (Packing{false, false, "a-b 2026-05-21"}));
  settings.layout.packPerGroup = true;
  EXPECT_EQ(packingOf(settings, "iPhone", day), (Packing{true, false, "iPhone 2026-05-21"}));
  settings.gathering.uiMode = UIGroupingMode::flat;
  EXPECT_EQ(packingOf(settings, "iPhone", day), (Packing{true, true, "iPhone 2026-05-21"}));
}

TEST(StagedFiles, archive_hasTheTimesOfItsFilesAndNoFileOfADesktop) {
  std::vector<MediaAsset> assets = assetsOf(1);
  for (const std::string name : {"undated.HEIC", ".DS_Store"}) {
    assets.emplace_back(name, name, MediaAsset::Text{}, MediaKind::photo, 5U, std::nullopt,
                        std::nullopt, false, MediaAsset::Text{}, MediaAsset::Text{});
  }
  TransferPlan plan;
  for (const MediaAsset& asset : assets) {
    const AssetBundle bundle = BundleBuilder::makeBundles({asset}).at(0);
    plan.files.push_back({asset, "d/" + std::string{asset.name()}, {}, true, bundle});
  }
  StagedFiles files{plan, Language::english};
  for (std::size_t i = 0; i < plan.files.size(); ++i) {
    const std::string name{plan.files[i].asset.name()};
    FileOutcome outcome{name, name, Staging::stagedPath("d/" + name), 5, FileOutcome::Copied{}};
    files.staged(i, {plan.files[i], outcome, std::nullopt});
  }
  const Instant undated{std::chrono::hours{24 * 365}};
  const ArchiveContent content = files.contentOf({"d", "d.zip", {0, 1, 2}}, undated);
  ASSERT_EQ(content.entries.size(), 2U);
  EXPECT_EQ(content.entries[0].modified, assets[0].captureDate());
  EXPECT_EQ(content.entries[1].name, "d/undated.HEIC");
  EXPECT_EQ(content.entries[1].modified, undated);
  EXPECT_EQ(files.report({}).failures.size(), 1U);
}

TEST(SpaceWait, spaceThatIsJustEnough_isEnough) {
  const TemporaryFolder temporary;
  FaultyFolder folder{openFolder(temporary.path())};
  std::uint64_t free = 99;
  int sleeps = 0;
  folder.faults().freeBytes = [&] { return free; };
  SpaceWait::Setup setup;
  setup.sleep = [&](auto, const auto&) {
    ++sleeps;
    ++free;
  };
  SpaceWait wait{setup, folder, {}};
  const SpaceWait::LogLine noLine = [](Log&, std::uint64_t, std::uint64_t) {};
  EXPECT_TRUE(wait.await(99, false, noLine));
  EXPECT_EQ(sleeps, 0);
  EXPECT_TRUE(wait.await(100, false, noLine));
  EXPECT_EQ(sleeps, 1);

  // A volume that does not report its space was full all the same.
  folder.faults().freeBytes = [] { return Folder::unknownFreeBytes; };
  std::vector<std::optional<RunPause>> pauses;
  setup.paused = [&](const auto& pause) { pauses.push_back(pause); };
  SpaceWait full{setup, folder, {}};
  EXPECT_TRUE(full.await(100, true, noLine));
  EXPECT_EQ(sleeps, 2);
  EXPECT_THAT(pauses, ElementsAre(run_pause::DiskFull{100, 0}, std::nullopt));
}

TEST(RunNotes, filesOfAnUnknownKind_areNamedUpToFive) {
  Library library;
  library.leftOut.unknown = {"a.x", "b.x", "c.x", "d.x", "e.x"};
  EXPECT_THAT(*unknownKindNote(Language::english, library),
              testing::EndsWith("(a.x, b.x, c.x, d.x, e.x)."));
  library.leftOut.unknown.push_back("f.x");
  EXPECT_THAT(*unknownKindNote(Language::english, library), testing::EndsWith(", e.x, …)."));
}

TEST_F(PackedTransferTest, nameThatCouldLeadElsewhere_isMadeSafeInItsArchive) {
  firstName = "..\\IMG\n.HEIC";
  const RunOutcome outcome = run();
  EXPECT_EQ(outcome.status, Status::completed);
  EXPECT_THAT(outcome.unpackedFolders, IsEmpty());
  EXPECT_EQ(outcome.report->files[0].path, "1970-01-01.zip/1970-01-01/..-IMG-.HEIC");
  expectTruth(outcome);
}

TEST_F(PackedTransferTest, run_packsEachFolderAndRemembersTheArchives) {
  const RunOutcome outcome = run();
  EXPECT_EQ(outcome.status, Status::completed);
  EXPECT_EQ(tally.copied, 6U);
  EXPECT_EQ(outcome.report->bytesWritten, 6U * 13);
  expectTruth(outcome);
  EXPECT_EQ(outcome.report->files[3].path, "1970-01-02.zip/1970-01-02/IMG_0003.HEIC");
  EXPECT_EQ(count(CopyVerification::State::intact), 3U);
  EXPECT_THAT(linesWith("pack"), ElementsAre("pack: 1970-01-01.zip — files=2, bytes=26",
                                             "pack: 1970-01-02.zip — files=2, bytes=26",
                                             "pack: 1970-01-03.zip — files=2, bytes=26"));
  EXPECT_EQ(snapshots.back().packedGroups, 3U);
  EXPECT_EQ(snapshots.back().packGroupsTotal, 3U);
  EXPECT_EQ(snapshots.back().stageFraction, 1.0);
  // Each byte of an archive counts when it is written and when it is read back.
  std::vector<double> fractions;
  for (const auto& snapshot : snapshots) {
    const bool isSecond = snapshot.stage == TransferStage::packing && snapshot.packedGroups == 1;
    if (isSecond) fractions.push_back(snapshot.stageFraction.value());
  }
  EXPECT_THAT(fractions, ElementsAre(0, 0.25, 0.5, 0.75, 1));
  // Corrupts a byte of a picture in an archive.
  std::string bytes = temporary.read("1970-01-02.zip");
  bytes.replace(bytes.find("IMG_0003.HEICPK"), 3, "IMH");
  temporary.write("1970-01-02.zip", bytes);
  EXPECT_EQ(count(CopyVerification::State::changed), 1U);
}

TEST_F(PackedTransferTest, secondRun_writesNewArchivesBesideTheOldOnes) {
  run();
  const auto first = files();
  assets = 7;
  const RunOutcome outcome = run();
  EXPECT_EQ(tally.copied, 7U);
  EXPECT_EQ(outcome.report->files[0].path, "1970-01-01 (2).zip/1970-01-01/IMG_0000.HEIC");
  const auto both = files();
  EXPECT_EQ(both.size(), 13U);
  for (const auto& file : first) EXPECT_THAT(both, testing::Contains(file));
  EXPECT_EQ(count(CopyVerification::State::intact), 7U);
}

TEST_F(PackedTransferTest, wholeArchive_holdsAllFolders) {
  isPerGroup = false;
  const RunOutcome outcome = run();
  expectTruth(outcome);
  EXPECT_EQ(outcome.report->files[5].path, "iPhone 2026-05-21.zip/1970-01-03/IMG_0005.HEIC");
}

TEST_F(PackedTransferTest, nameOfAnArchive_isOnDiskBeforeItsFilesAreForgotten) {
  std::vector<std::string> steps;
  folder.faults().rule = [&](FileOperation operation, const std::string& path) {
    // The other operations may come from several threads.
    if (operation == FileOperation::rename && path == "1970-01-01.zip") steps.emplace_back("name");
    if (operation == FileOperation::sync && path.empty()) steps.emplace_back("sync");
    if (operation == FileOperation::remove && path.ends_with("1970-01-01"))
      steps.emplace_back("remove");
  };
  run();
  const auto named = std::find(steps.begin(), steps.end(), "name");
  ASSERT_GE(std::distance(named, steps.end()), 3);
  EXPECT_EQ(named[1], "sync");
  EXPECT_THAT(steps, testing::Contains("remove"));
}

TEST_F(PackedTransferTest, fileThatFails_isMissingFromItsArchiveAlone) {
  source.missing = "IMG_0002.HEIC";
  const RunOutcome outcome = run();
  EXPECT_EQ(outcome.status, Status::completedWithFailures);
  EXPECT_EQ(tally.copied, 5U);
  EXPECT_EQ(outcome.report->failures.size(), 1U);
  expectTruth(outcome);
}

TEST_F(PackedTransferTest, archiveThatCannotBeMade_leavesAFolder) {
  struct Row {
    FileOperation operation;
    std::string path;
    int code;
    std::string reason;
  };
  const std::string part = ".Tavrix-staging/1970-01-02.zip.part";
  const std::vector<Row> rows{{FileOperation::create, part, EACCES, "нет прав доступа"},
                              {FileOperation::write, part, EFBIG, ""},
                              {FileOperation::sync, part, EIO, ""},
                              {FileOperation::read, part, EIO, ""},
                              {FileOperation::rename, "1970-01-02.zip", EACCES, ""}};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.path + " " + std::to_string(row.code));
    std::filesystem::remove_all(temporary.path());
    std::filesystem::create_directories(temporary.path());
    folder = LosingFolder{openFolder(temporary.path())};
    log.clear();
    folder.faults().rule = failing(row.operation, row.path, row.code);
    const RunOutcome outcome = run();
    EXPECT_EQ(outcome.status, Status::completed);
    EXPECT_EQ(tally.copied, 6U);
    expectTruth(outcome);
    EXPECT_EQ(outcome.report->files[2].path, "1970-01-02/IMG_0002.HEIC");
    ASSERT_EQ(outcome.unpackedFolders.size(), 1U);
    const std::string reason = sentences::systemErrorText(Language::russian, row.code);
    EXPECT_EQ(outcome.unpackedFolders[0].reason, reason);
    EXPECT_THAT(packingNotes(Language::russian, outcome),
                ElementsAre("Группа «1970-01-02» осталась обычной папкой: " + reason));
    EXPECT_THAT(linesWith("fallback"), ElementsAre("pack fallback 1970-01-02: " + reason));
    // Two archives and two files, all with digests.
    EXPECT_EQ(count(CopyVerification::State::intact), 4U);
  }
  isPerGroup = false;
  folder.faults().rule =
      failing(FileOperation::create, ".Tavrix-staging/iPhone 2026-05-21.zip.part", EACCES);
  temporary.write("1970-01-01/IMG_0000.HEIC", "another");
  temporary.write("1970-01-01/IMG_0001.HEIC", "IMG_0001.HEIC");
  const RunOutcome outcome = run();
  EXPECT_THAT(
      packingNotes(Language::russian, outcome),
      ElementsAre(HasSubstr("Общий архив не получился, группы остались обычными папками: ")));
  EXPECT_EQ(outcome.report->files[0].path, "1970-01-01/IMG_0000 (2).HEIC");
  EXPECT_EQ(outcome.report->files[1].path, "1970-01-01/IMG_0001.HEIC");
  EXPECT_EQ(temporary.read("1970-01-01/IMG_0000.HEIC"), "another");
}

TEST_F(PackedTransferTest, nameThatTheVolumeRefuses_isInItsArchiveAsItIs) {
  firstName = "a:b.HEIC";
  folder.faults().rule = refusingNames();
  const RunOutcome outcome = run();
  EXPECT_EQ(outcome.status, Status::completed);
  expectTruth(outcome);
  EXPECT_EQ(outcome.report->files[0].path, "1970-01-01.zip/1970-01-01/a:b.HEIC");
  EXPECT_FALSE(outcome.report->files[0].hasSafeName);
}

TEST_F(PackedTransferTest, fullDiskInPacking_waitsAndGoesOn) {
  std::uint64_t free = 100;
  folder.faults().freeBytes = [&] { return free; };
  slept = [&] { free += 400; };
  const RunOutcome outcome = run();
  EXPECT_EQ(outcome.status, Status::completed);
  expectTruth(outcome);
  ASSERT_EQ(pauses.size(), 2U);
  EXPECT_EQ(pauses[0], (run_pause::DiskFull{232, 100}));
  EXPECT_EQ(pauses[1], std::nullopt);
  EXPECT_THAT(linesWith("paused"),
              ElementsAre("pack paused: not enough space for 1970-01-01 (needed 332, free 100)"));
  EXPECT_THAT(linesWith("space freed"), ElementsAre("transfer: space freed — continuing"));
}

TEST_F(PackedTransferTest, diskThatSaysItHasRoomAndHasNone_isNotAskedForEver) {
  folder.faults().rule =
      failing(FileOperation::write, ".Tavrix-staging/1970-01-02.zip.part", ENOSPC);
  const RunOutcome outcome = run();
  EXPECT_EQ(outcome.status, Status::completed);
  EXPECT_EQ(outcome.unpackedFolders.size(), 1U);
  EXPECT_EQ(linesWith("pack paused").size(), 2U);
  expectTruth(outcome);
}

TEST_F(PackedTransferTest, fullDiskInCopying_waitsAndFetchesOnlyTheRest) {
  bool isFull = true;
  folder.faults().rule = [&](FileOperation operation, const std::string& path) {
    const bool isFourth = path.find("IMG_0003.HEIC.part") != std::string::npos;
    if (isFull && operation == FileOperation::write && isFourth)
      throw FileError{operation, path, ENOSPC};
  };
  slept = [&] { isFull = false; };
  const RunOutcome outcome = run();
  EXPECT_EQ(outcome.status, Status::completed);
  EXPECT_EQ(tally.copied, 6U);
  EXPECT_EQ(outcome.report->bytesCopied, 6U * 13);
  EXPECT_EQ(linesWith("transfer paused: disk full (free ").size(), 1U);
  expectTruth(outcome);
}

TEST_F(PackedTransferTest, cancel_keepsFinishedArchivesAlone) {
  for (const bool whileWaiting : {false, true}) {
    stop = {};
    folder.faults().rule = [&](FileOperation operation, const std::string& path) {
      const bool isSecond =
          path.ends_with("1970-01-02.zip.part") || path.ends_with("1970-01-02 (2).zip.part");
      if (operation != FileOperation::create || !isSecond) return;
      if (!whileWaiting) stop.request_stop();
      if (whileWaiting) throw FileError{operation, path, ENOSPC};
    };
    slept = [&] { stop.request_stop(); };
    const RunOutcome outcome = run();
    EXPECT_EQ(outcome.status, Status::cancelled);
    EXPECT_EQ(tally.copied, 2U);
    EXPECT_EQ(tally.notReached, 4U);
    EXPECT_FALSE(temporary.has(".Tavrix-staging"));
    EXPECT_EQ(files().size(), whileWaiting ? 4U : 2U);
  }
  folder.faults().rule = {};
  stop = {};
  stop.request_stop();
  EXPECT_EQ(run().status, Status::cancelled);
  EXPECT_EQ(tally.notReached, 6U);
  EXPECT_EQ(files().size(), 4U);
}

TEST_F(PackedTransferTest, diskThatGoes_interruptsAndTellsWhatGotThrough) {
  folder.faults().rule = [&](FileOperation operation, const std::string& path) {
    if (operation == FileOperation::rename && path.starts_with("1970-01-02"))
      throw FileError{operation, path, EIO};
  };
  const RunOutcome outcome = run();
  EXPECT_EQ(outcome.status, Status::interrupted);
  ASSERT_TRUE(outcome.interruption.has_value());
  EXPECT_EQ(tally.copied, 2U);
  expectTruth(outcome);
}

/// Performs a run in a child process that dies at its `step`th disk operation. Returns false if the
/// run finished first.
bool dies(PackedTransferTest& test, int step) {
  const pid_t child = ::fork();
  if (child == 0) {
    std::atomic<int> operations = 0;
    test.folder.faults().rule = [&](FileOperation, const std::string&) {
      if (++operations == step) ::_exit(9);
    };
    test.run();
    ::_exit(0);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  return WIFEXITED(status) && WEXITSTATUS(status) == 9;
}

TEST_F(PackedTransferTest, killAtAnyMoment_losesNothingAndTheNextRunClearsUp) {
  assets = 4;
  const int stride = std::getenv("TAVRIX_LONG_TESTS") != nullptr ? 1 : 5;
  int step = 1;
  for (;; step += stride) {
    std::filesystem::remove_all(temporary.path());
    std::filesystem::create_directories(temporary.path());
    folder = LosingFolder{openFolder(temporary.path())};
    temporary.write("1970-01-01.zip", "the person's own");
    if (!dies(*this, step)) break;
    EXPECT_EQ(temporary.read("1970-01-01.zip"), "the person's own");
    std::filesystem::remove(temporary / "1970-01-01.zip");
    // Every file with the name of an archive is complete.
    for (const auto& [path, content] : files()) {
      if (path.find(".zip/") != std::string::npos) {
        EXPECT_TRUE(path.ends_with(content)) << step;
      }
    }
    DestinationMarker::removeLeftOvers(folder);  // as opening for writing does
    const RunOutcome outcome = run();
    EXPECT_EQ(outcome.status, Status::completed) << step;
    EXPECT_THAT(outcome.leftOvers.rescued, IsEmpty()) << step;
    EXPECT_FALSE(temporary.has(".Tavrix-staging")) << step;
    const auto after = files();
    for (const FileOutcome& file : outcome.report->files) {
      EXPECT_EQ(after.at(*file.path), file.assetID) << step;
    }
    for (const auto& [path, content] : after) EXPECT_FALSE(path.ends_with(".part")) << path;
  }
  EXPECT_GT(step, 50);
}

TEST(PackedCrash, powerThatFailsAtAnyStep_leavesWholeArchivesAndANextRunCompletes) {
  const int stride = std::getenv("TAVRIX_LONG_TESTS") != nullptr ? 1 : 7;
  int losses = 0;
  for (const LosingFolder::Loss& loss : LosingFolder::losses()) {
    // The kinds of loss meet different steps.
    int failAt = ++losses;
    for (bool hasFailed = true; hasFailed; failAt += stride) {
      SCOPED_TRACE(failAt);
      PackingBench bench;
      bench.assets = 4;
      bench.isPerGroup = failAt % 2 == 0;
      std::atomic<int> count = 0;
      bench.folder.faults().rule = [&](FileOperation operation, const std::string& path) {
        // From then on nothing happens any more, no clearing up either.
        if (++count >= failAt) throw FileError{operation, path, EIO};
      };
      try {
        bench.run();
      } catch (const std::exception&) {
      }
      hasFailed = count >= failAt;
      bench.folder.faults().rule = {};
      bench.folder.lose(loss);
      EXPECT_THAT(DestinationMarker::load(bench.folder).damaged, IsEmpty());
      // Everything with a final name is whole.
      for (const auto& [path, content] : bench.files()) {
        EXPECT_TRUE(path.ends_with(".part") || lastPathComponent(path) == content) << path;
      }
      DestinationMarker::removeLeftOvers(bench.folder);  // as opening for writing does
      const RunOutcome outcome = bench.run();
      EXPECT_EQ(outcome.status, Status::completed);
      EXPECT_FALSE(bench.temporary.has(".Tavrix-staging"));
      const auto after = bench.files();
      for (const FileOutcome& file : outcome.report->files) {
        EXPECT_EQ(after.at(*file.path), file.assetID);
      }
      for (const auto& [path, content] : after) EXPECT_FALSE(path.ends_with(".part")) << path;
    }
    EXPECT_GT(failAt, 50);
  }
}

TEST_F(PackedTransferTest, leftOvers_goUnlessThePhoneHasThemNoMore) {
  const std::string staging = ".Tavrix-staging/1970-01-01/";
  temporary.write(staging + "IMG_0000.HEIC", "IMG_0000.HEIC");
  temporary.write(staging + "Anna IMG_0001.HEIC", "IMG_0001.HEIC");
  temporary.write(staging + "IMG_0002.HEIC", "IMG_0002 of another size");
  temporary.write(staging + "IMG_0900.HEIC", "IMG_0900.HEIC");
  temporary.write(staging + "IMG_0901.HEIC.part", "half");
  temporary.write("1970-01-01/IMG_0900.HEIC", "other");
  const RunOutcome outcome = run();
  EXPECT_THAT(outcome.leftOvers.rescued,
              ElementsAre("1970-01-01/IMG_0002.HEIC", "1970-01-01/IMG_0900 (2).HEIC"));
  EXPECT_EQ(temporary.read("1970-01-01/IMG_0900 (2).HEIC"), "IMG_0900.HEIC");
  EXPECT_EQ(temporary.read("1970-01-01/IMG_0900.HEIC"), "other");
  EXPECT_FALSE(temporary.has(".Tavrix-staging"));
  EXPECT_FALSE(temporary.has("1970-01-01/IMG_0000.HEIC"));
  EXPECT_THAT(packingNotes(Language::english, outcome),
              ElementsAre(HasSubstr("does not hold: 2 files;"), HasSubstr("copies (3 files);")));
}

TEST_F(PackedTransferTest, leftOverOfAFileThatIsInTheDestination_isRemoved) {
  temporary.write(".Tavrix-staging/d/IMG_0000.HEIC", "IMG_0000.HEIC");
  TransferPlan plan;
  plan.skippedKnown = assetsOf(1);
  const auto content = Destination::read(folder, phone);
  const auto leftOvers = Staging::settleLeftOvers(folder, content.view.filesOnDisk(), plan);
  EXPECT_EQ(leftOvers.removed, 1U);
  EXPECT_THAT(leftOvers.rescued, IsEmpty());
}

TEST_F(PackedTransferTest, stagingThatIsALink_isNotFollowed) {
  const TemporaryFolder outside;
  outside.write("IMG_0900.HEIC", "theirs");
  std::filesystem::create_directory_symlink(outside.path(), temporary / ".Tavrix-staging");
  const RunOutcome outcome = run();
  EXPECT_EQ(outside.read("IMG_0900.HEIC"), "theirs");
  EXPECT_EQ(outcome.status, Status::completed);
  expectTruth(outcome);
}

}  // namespace
}  // namespace tavrix
