// Tests the state after a run when the disk fails, fills up or goes away, and when the process is
// killed.

#include <gmock/gmock.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <mutex>
#include <set>
#include <thread>

#include "foundation/Text.h"
#include "foundation/tests/support/LosingFolder.h"
#include "transfer/DestinationMarker.h"
#include "transfer/TransferEngine.h"
#include "transfer/tests/TestLibrary.h"

namespace tavrix {
namespace {

using testing::IsEmpty;

/// Expects that every file with a final name has exactly the bytes of its source.
void expectOnlyWholeFiles(const std::string& path, const TransferPlan& plan) {
  const auto folder = openFolder(path);
  for (const PlannedFile& file : plan.files) {
    if (!folder->status(file.relativePath)) continue;
    EXPECT_EQ(folder->readFile(file.relativePath, UINT64_MAX),
              (isConverted(file.conversion) ? "converted:" : "") +
                  contentOf(std::string{file.asset.id()}, file.asset.sizeBytes()))
        << file.relativePath;
  }
}

/// Expects in addition that no file is missing and that there is no other file.
void expectComplete(const std::string& path, const TransferPlan& plan) {
  expectOnlyWholeFiles(path, plan);
  auto paths = pathsOf(plan);
  std::sort(paths.begin(), paths.end());
  EXPECT_EQ(filesIn(path), paths);
}

/// Expects that the report names exactly the files that are there.
void expectTrue(const TransferReport& report, const std::string& path) {
  for (const FileOutcome& outcome : report.files) {
    EXPECT_EQ(outcome.path.has_value(), !outcome.is<FileOutcome::Failed>());
    if (!outcome.path) continue;
    EXPECT_TRUE(openFolder(path)->status(*outcome.path)) << *outcome.path;
  }
}

struct Fault {
  FileOperation operation;
  int code;
  bool stopsRun;
};

class TransferFaultTest : public testing::TestWithParam<Fault> {};

TEST_P(TransferFaultTest, anyStep_thatFails_leavesWholeFilesAndATrueReport) {
  const Fault fault = GetParam();
  const auto plan = planOf(6, 3000);
  MemorySource source;
  bool reached = true;
  for (int failAt = 1; reached; ++failAt) {
    const TemporaryFolder folder;
    FaultyFolder destination{openFolder(folder.path())};
    int count = 0;
    destination.faults().rule = [&](FileOperation operation, const std::string& path) {
      if (operation != fault.operation || ++count != failAt) return;
      if (operation == FileOperation::write) throw ShortWrite{1000, fault.code};
      throw FileError{operation, path, fault.code};
    };
    TransferReport report;
    bool wasInterrupted = false;
    try {
      report = TransferEngine{{.limits = {.files = 2}}}.run(plan, source, destination);
    } catch (const TransferEngine::Interrupted& interrupted) {
      wasInterrupted = true;
      report = interrupted.report();
      EXPECT_EQ(interrupted.underlying().code(), fault.code);
    }
    reached = count >= failAt;
    EXPECT_EQ(wasInterrupted, reached && fault.stopsRun) << failAt;
    expectOnlyWholeFiles(folder.path(), plan);
    expectTrue(report, folder.path());
    for (const std::string& path : filesIn(folder.path()))
      EXPECT_FALSE(path.ends_with(".part")) << path;

    destination.faults().rule = {};
    TransferEngine{}.run(plan, source, destination);
    expectComplete(folder.path(), plan);
  }
}

INSTANTIATE_TEST_SUITE_P(Operations, TransferFaultTest,
                         testing::Values(Fault{FileOperation::create, ENOSPC, true},
                                         Fault{FileOperation::create, EACCES, false},
                                         Fault{FileOperation::write, ENOSPC, true},
                                         Fault{FileOperation::write, EIO, true},
                                         Fault{FileOperation::write, EFBIG, false},
                                         Fault{FileOperation::sync, EIO, true},
                                         Fault{FileOperation::close, EIO, true},
                                         Fault{FileOperation::close, EDQUOT, true},
                                         Fault{FileOperation::rename, EIO, true},
                                         Fault{FileOperation::rename, EACCES, false},
                                         Fault{FileOperation::makeFolder, EROFS, true},
                                         Fault{FileOperation::makeFolder, ENAMETOOLONG, false},
                                         Fault{FileOperation::status, EIO, true}),
                         [](const auto& row) {
                           return std::to_string(static_cast<int>(row.param.operation)) + "_" +
                                  std::to_string(row.param.code);
                         });

TEST(TransferFault, destinationThatVanishes_interruptsTheRun) {
  const TemporaryFolder parent;
  std::filesystem::create_directory(parent / "disk");
  const auto destination = openFolder(parent / "disk");
  MemorySource source;
  source.before = [&, count = 0](const MediaAsset&) mutable {
    if (++count == 3) std::filesystem::remove_all(parent / "disk");
  };
  EXPECT_THROW(TransferEngine{{.limits = {.files = 1}}}.run(planOf(5, 1000), source, *destination),
               TransferEngine::Interrupted);
  EXPECT_FALSE(std::filesystem::exists(parent / "disk"));
}

TEST(TransferFault, destinationThatIsMovedAway_interruptsTheRun) {
  const TemporaryFolder parent;
  std::filesystem::create_directory(parent / "disk");
  const auto destination = openFolder(parent / "disk");
  MemorySource source;
  source.before = [&, count = 0](const MediaAsset&) mutable {
    if (++count == 3) std::filesystem::rename(parent / "disk", parent / "trash");
  };
  try {
    TransferEngine{{.limits = {.files = 1}}}.run(planOf(5, 1000), source, *destination);
    ADD_FAILURE() << "not interrupted";
  } catch (const TransferEngine::Interrupted& interrupted) {
    EXPECT_EQ(interrupted.report().copied, 2U);
  }
  EXPECT_EQ(filesIn(parent / "trash").size(), 2U);
}

TEST(TransferFault, storageThatLostBytes_isNotTrustedWhenItSaysYesAgain) {
  // The system reports lost bytes only once; the next sync succeeds as if nothing had been lost.
  for (const int threads : {1, 2}) {
    const TemporaryFolder folder;
    FaultyFolder destination{openFolder(folder.path())};
    std::atomic<bool> hasFailed = false;
    destination.faults().rule = [&](FileOperation operation, const std::string& path) {
      if (operation == FileOperation::sync && !hasFailed.exchange(true))
        throw FileError{operation, path, EIO};
    };
    MemorySource source;
    source.threads = threads;
    const auto plan = planOf(6, 1000);
    try {
      TransferEngine{{.limits = {.files = 2}}}.run(plan, source, destination);
      ADD_FAILURE() << "not interrupted";
    } catch (const TransferEngine::Interrupted& interrupted) {
      EXPECT_EQ(interrupted.report().copied, 0U);
    }
    EXPECT_THAT(filesIn(folder.path()), IsEmpty());
  }
}

/// A volume that ignores letter case.
class CaseBlindFolder : public FaultyFolder {
 public:
  using FaultyFolder::FaultyFolder;

  std::optional<FileStatus> status(const std::string& path) const override {
    return FaultyFolder::status(nameOnDisk(path));
  }
  bool renameWithoutReplacing(const std::string& from, const std::string& to) override {
    return nameOnDisk(to) == to && FaultyFolder::renameWithoutReplacing(from, to);
  }
  std::unique_ptr<ByteReader> openFile(const std::string& path) const override {
    return FaultyFolder::openFile(nameOnDisk(path));
  }

 private:
  std::string nameOnDisk(const std::string& path) const {
    std::string found = path;
    visitAll([&](const std::string& other, const FileStatus&) {
      if (caseFolded(other) == caseFolded(path)) found = other;
    });
    return found;
  }
};

TEST(TransferFault, fileThatDiffersOnlyInCase_isNotTakenForOurs) {
  const TemporaryFolder folder;
  const auto plan = planOf(1, 1000);
  folder.write("2026-05-20/img_1000.heic", contentOf("somebody's", 1000));
  CaseBlindFolder destination{openFolder(folder.path())};
  MemorySource source;
  const auto report = TransferEngine{}.run(plan, source, destination);
  EXPECT_EQ(report.files[0].path, "2026-05-20/IMG_1000 (2).HEIC");
  EXPECT_EQ(folder.read("2026-05-20/IMG_1000 (2).HEIC"), contentOf("100APPLE/IMG_1000.HEIC", 1000));
  EXPECT_EQ(folder.read("2026-05-20/img_1000.heic"), contentOf("somebody's", 1000));
  // A file with the right bytes under the other spelling is ours.
  folder.write("2026-05-20/img_1000.heic", contentOf("100APPLE/IMG_1000.HEIC", 1000));
  EXPECT_EQ(kindsOf(TransferEngine{}.run(plan, source, destination)),
            std::vector<std::string>{"alreadyThere"});
}

TEST(TransferFault, lackOfDescriptors_isWaitedFor) {
  const auto plan = planOf(12, 1000);
  for (const auto operation :
       {FileOperation::create, FileOperation::rename, FileOperation::status}) {
    const TemporaryFolder folder;
    FaultyFolder destination{openFolder(folder.path())};
    std::mutex mutex;
    std::set<std::string> asked;
    destination.faults().rule = [&](FileOperation now, const std::string& path) {
      const std::lock_guard lock{mutex};
      if (now == operation && asked.insert(path).second) throw FileError{now, path, EMFILE};
    };
    MemorySource source;
    source.threads = 4;
    EXPECT_EQ(TransferEngine{{.limits = {.files = 3}}}.run(plan, source, destination).copied, 12U);
    expectComplete(folder.path(), plan);
  }
  // The second attempt is not counted in addition to the first.
  TransferProgressSnapshot last;
  const TemporaryFolder recounted;
  MemorySource lacking;
  lacking.after = [hasFailed = false](const MediaAsset& asset) mutable {
    if (!std::exchange(hasFailed, true))
      throw SourceError{SourceError::Kind::unreadable, std::string{asset.name()}, EMFILE};
  };
  TransferEngine{}.run(plan, lacking, *openFolder(recounted.path()),
                       [&](const TransferProgressSnapshot& now) { last = now; });
  EXPECT_EQ(last.bytesDone, last.bytesTotal);
  EXPECT_EQ(last.verifiedCount, 12U);
  // A worker that is alone does not wait for ever.
  const TemporaryFolder folder;
  FaultyFolder destination{openFolder(folder.path())};
  destination.faults().rule = failing(FileOperation::create, EMFILE);
  MemorySource source;
  EXPECT_EQ(TransferEngine{}.run(plan, source, destination).failures.size(), 12U);
}

TEST(TransferFault, folderThatVanishes_isMadeAgain) {
  const TemporaryFolder folder;
  const auto destination = openFolder(folder.path());
  MemorySource source;
  source.before = [&, count = 0](const MediaAsset&) mutable {
    if (++count == 3) std::filesystem::remove_all(folder / "2026-05-20");
  };
  const auto plan = planOf(5, 1000);
  const auto report = TransferEngine{{.limits = {.files = 1}}}.run(plan, source, *destination);
  EXPECT_EQ(report.files.size(), 5U);
  expectOnlyWholeFiles(folder.path(), plan);
  TransferEngine{}.run(plan, source, *destination);
  expectComplete(folder.path(), plan);
}

TEST(TransferFault, realFullDisk_interruptsAndGoesOnWhenThereIsRoom) {
  const TemporaryFolder folder;
  if (::mount("tmpfs", folder.path().c_str(), "tmpfs", 0, "size=600k") != 0) {
    GTEST_SKIP() << "mounting a small disk is not permitted here";
  }
  const auto plan = planOf(40, 40'000);
  MemorySource source;
  source.threads = 2;
  {
    const auto destination = openFolder(folder.path());
    try {
      TransferEngine{}.run(plan, source, *destination);
      ADD_FAILURE() << "not interrupted";
    } catch (const TransferEngine::Interrupted& interrupted) {
      EXPECT_EQ(interrupted.underlying().code(), ENOSPC);
      EXPECT_GT(interrupted.report().copied, 5U);
      EXPECT_EQ(interrupted.report().copied, filesIn(folder.path()).size());
      expectTrue(interrupted.report(), folder.path());
    }
    expectOnlyWholeFiles(folder.path(), plan);
    EXPECT_EQ(::mount("tmpfs", folder.path().c_str(), "tmpfs", MS_REMOUNT, "size=16m"), 0);
    TransferEngine{}.run(plan, source, *destination);
    expectComplete(folder.path(), plan);
  }
  ::umount(folder.path().c_str());
}

/// Copies the plan in a child process and kills it after `delay`.
void runAndKill(const TransferPlan& plan, const std::string& path,
                std::chrono::microseconds delay) {
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    try {
      MemorySource source;
      source.threads = 2;
      source.pieceBytes = 4096;
      const auto destination = openFolder(path);
      TransferEngine{{.limits = {.files = 8}}}.run(plan, source, *destination);
    } catch (...) {
      ::_exit(2);
    }
    ::_exit(0);
  }
  std::this_thread::sleep_for(delay);
  ::kill(child, SIGKILL);
  int status = 0;
  ::waitpid(child, &status, 0);
  // Either the kill came in time or the run was complete; the run never failed by itself.
  EXPECT_TRUE(WIFSIGNALED(status) || WEXITSTATUS(status) == 0);
}

TEST(TransferKill, killedAtRandomMoments_aNextRunCompletesEverything) {
  const int rounds = std::getenv("TAVRIX_LONG_TESTS") != nullptr ? 150 : 12;
  const auto plan = planOf(120, 15'000);
  std::uint64_t state = 42;
  int killedInTheMiddle = 0;
  for (int round = 0; round < rounds; ++round) {
    const TemporaryFolder folder;
    state = state * 6364136223846793005U + 1442695040888963407U;
    runAndKill(plan, folder.path(), std::chrono::microseconds{500 + (state >> 33U) % 30'000});
    const auto left = filesIn(folder.path());
    if (!left.empty() && left != pathsOf(plan)) ++killedInTheMiddle;
    expectOnlyWholeFiles(folder.path(), plan);
    MemorySource source;
    const auto destination = openFolder(folder.path());
    TransferEngine{}.run(plan, source, *destination);
    expectComplete(folder.path(), plan);
  }
  EXPECT_GT(killedInTheMiddle, rounds / 10);
}

}  // namespace
}  // namespace tavrix
