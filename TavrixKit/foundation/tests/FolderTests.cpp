#include "foundation/files/Folder.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/fsuid.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <thread>

#include "foundation/files/AtomicFile.h"
#include "foundation/files/FileReader.h"
#include "foundation/files/PrivateFolder.h"
#include "foundation/tests/support/LosingFolder.h"
#include "foundation/tests/support/TemporaryFolder.h"

namespace tavrix {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::UnorderedElementsAre;

void put(Folder& folder, const std::string& path, std::string_view content) {
  const auto file = folder.createFile(path);
  file->append(std::as_bytes(std::span{content}));
  file->close();
}

/// Returns the error code with which an operation fails, or 0 if it does not fail.
template <typename Operation>
int codeOf(Operation operation) {
  try {
    operation();
    return 0;
  } catch (const FileError& error) {
    return error.code();
  }
}

/// A folder "inside" and its sibling "outside", which no operation may reach.
class FolderTest : public ::testing::Test {
 protected:
  FolderTest() {
    temporary.write("outside/secret", "secret");
    fs::create_directory(temporary / "inside");
    folder = openFolder(temporary / "inside");
  }

  TemporaryFolder temporary;
  std::unique_ptr<Folder> folder;
};

/// A kind of folder; all of them keep the same promises.
struct FolderKind {
  const char* name;
  std::unique_ptr<Folder> (*open)(const std::string& path);

  friend void PrintTo(const FolderKind& kind, std::ostream* out) { *out << kind.name; }
};

class FolderContract : public FolderTest, public ::testing::WithParamInterface<FolderKind> {
 protected:
  FolderContract() { folder = GetParam().open(temporary / "inside"); }
};

template <typename Wrapping>
std::unique_ptr<Folder> openWrapped(const std::string& path) {
  return std::make_unique<Wrapping>(openFolder(path));
}

INSTANTIATE_TEST_SUITE_P(Kinds, FolderContract,
                         ::testing::Values(FolderKind{"disk", openFolder},
                                           FolderKind{"faulty", openWrapped<FaultyFolder>},
                                           FolderKind{"losing", openWrapped<LosingFolder>}));

TEST_P(FolderContract, pathsThatLeadOut_areRefusedByEveryOperation) {
  fs::create_directory(temporary / "inside/sub");
  fs::create_directory_symlink("../outside", temporary / "inside/way");
  fs::create_directory_symlink(temporary / "outside", temporary / "inside/absolute");
  put(*folder, "mine", "mine");
  for (const std::string path : {"../outside/secret", "way/secret", "absolute/secret",
                                 "sub/../../outside/secret", "..", "sub/..", "/secret"}) {
    EXPECT_EQ(codeOf([&] { folder->status(path); }), EXDEV) << path;
    EXPECT_EQ(codeOf([&] { folder->createFile(path); }), EXDEV) << path;
    EXPECT_EQ(codeOf([&] { folder->readFile(path, 100); }), EXDEV) << path;
    EXPECT_EQ(codeOf([&] { folder->removeFile(path); }), EXDEV) << path;
    EXPECT_EQ(codeOf([&] { folder->makeFolders(path + "/new"); }), EXDEV) << path;
    EXPECT_EQ(codeOf([&] { folder->renameReplacing("mine", path); }), EXDEV) << path;
    EXPECT_EQ(codeOf([&] { folder->renameWithoutReplacing("mine", path); }), EXDEV) << path;
    EXPECT_EQ(codeOf([&] { folder->renameReplacing(path, "mine"); }), EXDEV) << path;
  }
  EXPECT_EQ(codeOf([&] { folder->createFile(std::string{"cut\0off", 7}); }), EINVAL);
  EXPECT_EQ(codeOf([&] { folder->makeFolders(std::string{"cut\0off", 7}); }), EINVAL);
  EXPECT_EQ(temporary.read("outside/secret"), "secret");
  EXPECT_THAT(folder->names(), ElementsAre("absolute", "mine", "sub", "way"));
}

TEST_P(FolderContract, linkedFolderInside_isRefusedToo) {
  // visitAll() does not follow the link, so a file written through it would be unknown next time.
  fs::create_directory(temporary / "inside/2026");
  fs::create_directory_symlink("2026", temporary / "inside/latest");
  EXPECT_EQ(codeOf([&] { put(*folder, "latest/a", "1"); }), EXDEV);
  EXPECT_FALSE(temporary.has("inside/2026/a"));
}

TEST_P(FolderContract, folderThatWasMovedAway_isNotWrittenTo) {
  folder->makeFolders("2026");
  put(*folder, "2026/a", "1");
  fs::rename(temporary / "inside/2026", temporary / "trash");
  EXPECT_EQ(codeOf([&] { put(*folder, "2026/b", "1"); }), ENOENT);
  EXPECT_TRUE(folder->exists());
  fs::rename(temporary / "inside", temporary / "elsewhere");
  EXPECT_FALSE(folder->exists());
}

TEST_P(FolderContract, createFile_replacesLeftoversAndLinksThemselves) {
  put(*folder, "a.part", "a long leftover");
  put(*folder, "a.part", "new");
  EXPECT_EQ(folder->readFile("a.part", 3), "new");
  fs::create_symlink("../outside/secret", temporary / "inside/b.part");
  put(*folder, "b.part", "new");
  EXPECT_EQ(temporary.read("outside/secret"), "secret");
  EXPECT_EQ(folder->status("b.part")->type, FileStatus::Type::file);
  EXPECT_EQ(codeOf([&] { folder->createFile("none/c.part"); }), ENOENT);
}

TEST_P(FolderContract, renameWithoutReplacing_leavesWhateverHasTheName) {
  put(*folder, "new", "new");
  put(*folder, "file", "old");
  fs::create_directory(temporary / "inside/folder");
  fs::create_symlink("nowhere", temporary / "inside/link");
  for (const std::string name : {"file", "folder", "link"}) {
    const auto before = folder->status(name);
    EXPECT_FALSE(folder->renameWithoutReplacing("new", name)) << name;
    EXPECT_EQ(folder->status(name), before);
  }
  EXPECT_TRUE(folder->renameWithoutReplacing("new", "folder/free"));
  EXPECT_EQ(folder->readFile("folder/free", 10), "new");
  EXPECT_FALSE(folder->status("new"));
  EXPECT_EQ(codeOf([&] { folder->renameWithoutReplacing("gone", "x"); }), ENOENT);
}

TEST_P(FolderContract, whatIsMissing_isNothingRatherThanAnError) {
  put(*folder, "file", "x");
  EXPECT_FALSE(folder->status("none"));
  EXPECT_FALSE(folder->status("none/deeper"));
  EXPECT_FALSE(folder->status("file/deeper"));
  EXPECT_NO_THROW(folder->removeFile("none"));
  EXPECT_NO_THROW(folder->removeFile("none/deeper"));
  EXPECT_EQ(codeOf([&] { folder->readFile("none", 1); }), ENOENT);
}

TEST_P(FolderContract, makeFolders_makesWhatIsMissingAlsoAfterARemoval) {
  folder->makeFolders("2026/05/20");
  folder->makeFolders("2026/05/20");
  fs::remove_all(temporary / "inside/2026");
  folder->makeFolders("2026/05/20");
  put(*folder, "2026/05/20/a", "1");
  EXPECT_EQ(temporary.read("inside/2026/05/20/a"), "1");
  EXPECT_EQ(codeOf([&] { folder->makeFolders("2026/05/20/a"); }), ENOTDIR);
  fs::create_symlink("nowhere", temporary / "inside/dangling");
  EXPECT_EQ(codeOf([&] { folder->makeFolders("dangling"); }), EXDEV);
}

TEST_P(FolderContract, readFile_takesOnlyRegularFilesWithinTheLimit) {
  const std::string content(200'000, 'x');
  put(*folder, "large", content);
  EXPECT_EQ(folder->readFile("large", content.size()), content);
  EXPECT_EQ(codeOf([&] { folder->readFile("large", content.size() - 1); }), EFBIG);
  fs::create_symlink("large", temporary / "inside/link");
  EXPECT_EQ(codeOf([&] { folder->readFile("link", 1'000'000); }), ELOOP);
  ASSERT_EQ(::mkfifo((temporary / "inside/pipe").c_str(), 0600), 0);
  EXPECT_EQ(codeOf([&] { folder->readFile("pipe", 10); }), EINVAL);
  EXPECT_EQ(codeOf([&] { openFileForReading(temporary / "inside/pipe"); }), EINVAL);
  EXPECT_EQ(codeOf([&] { openFileForReading(temporary / "inside"); }), EISDIR);
}

TEST_F(FolderTest, privateFolder_isTheUsersAlone) {
  const fs::path base{temporary / "user/state"};
  const auto opened = openPrivateFolder(base.string());
  opened->makeFolders("history");
  put(*opened, "history/run.json", "{}");
  for (const char* const path : {"..", ".", "history", "history/run.json"}) {
    const auto others = fs::status(base / path).permissions() & ~fs::perms::owner_all;
    EXPECT_EQ(others, fs::perms::none) << path;
  }
}

TEST_P(FolderContract, removeAll_takesTheFolderAndNothingThatLinksLeadTo) {
  fs::create_directories(temporary / "outside");
  temporary.write("outside/kept", "x");
  for (const std::string name : {"a/b/c/1", "a/b/2", "a/3", "other"}) {
    temporary.write("inside/" + name, "x");
  }
  fs::create_directory_symlink(temporary / "outside", temporary / "inside/a/b/link");
  fs::create_directory_symlink(temporary / "outside", temporary / "inside/link");
  folder->removeAll("a/b");
  EXPECT_FALSE(temporary.has("inside/a/b"));
  EXPECT_TRUE(temporary.has("inside/a/3"));
  folder->removeAll("a");
  folder->removeAll("a");
  folder->removeAll("none/at/all");
  folder->removeAll("link");
  EXPECT_EQ(codeOf([&] { folder->removeAll("../outside"); }), EXDEV);
  EXPECT_THAT(folder->names(), ElementsAre("other"));
  EXPECT_EQ(temporary.read("outside/kept"), "x");
}

TEST_P(FolderContract, overwrite_replacesBytesInPlace) {
  const auto file = folder->createFile("a");
  const auto bytes = [](std::string_view text) { return std::as_bytes(std::span{text}); };
  file->append(bytes("0123456789"));
  file->overwrite(2, bytes("ab"));
  file->append(bytes("!"));
  file->close();
  EXPECT_EQ(temporary.read("inside/a"), "01ab456789!");
}

TEST_P(FolderContract, visitAll_findsEverythingOnceAndFollowsNoLink) {
  temporary.write("inside/a/b/c", "123");
  temporary.write("inside/closed/d", "");
  fs::create_directory_symlink("..", temporary / "inside/a/up");
  fs::permissions(temporary / "inside/closed", fs::perms::none);
  std::vector<std::string> seen;
  folder->visitAll([&](const std::string& path, const FileStatus& status) {
    if (path != "closed/d") seen.push_back(path + " " + std::to_string(int(status.type)));
  });
  fs::permissions(temporary / "inside/closed", fs::perms::owner_all);
  EXPECT_THAT(seen, UnorderedElementsAre("a 1", "a/b 1", "a/b/c 0", "a/up 2", "closed 1"));
}

TEST_F(FolderTest, closedFolders_areGivenBack) {
  temporary.write("inside/open/a", "1");
  temporary.write("inside/open/closed/b", "1");
  temporary.write("inside/unsearchable/c", "1");
  fs::permissions(temporary / "inside/open/closed", fs::perms::none);
  fs::permissions(temporary / "inside/unsearchable",
                  fs::perms::owner_read | fs::perms::others_read);
  fs::permissions(temporary.path(), fs::perms::all);
  std::vector<std::string> seen;
  std::vector<UnreadableFolder> unreadable;
  std::thread{[&] {
    // Root may read everything, so this thread accesses files as another user from here on.
    if (::geteuid() == 0) ::setfsuid(65534);
    unreadable =
        folder->visitAll([&](const std::string& path, const FileStatus&) { seen.push_back(path); });
  }}.join();
  fs::permissions(temporary / "inside/open/closed", fs::perms::owner_all);
  fs::permissions(temporary / "inside/unsearchable", fs::perms::owner_all);
  EXPECT_THAT(seen, UnorderedElementsAre("open", "open/a", "open/closed", "unsearchable"));
  EXPECT_EQ(unreadable,
            (std::vector<UnreadableFolder>{{"open/closed", EACCES}, {"unsearchable", EACCES}}));
  for (const char* path : {"open/closed", "open/closed/b", "unsearchable/x/y"}) {
    EXPECT_TRUE(liesInside(path, unreadable)) << path;
  }
  for (const char* path : {"open", "open/closed2/b", "b", "open/closed.b"}) {
    EXPECT_FALSE(liesInside(path, unreadable)) << path;
  }
}

TEST_F(FolderTest, lockThatIsHeldForAMoment_isWaitedFor) {
  auto asking = openFolder(temporary / "inside");
  ASSERT_TRUE(asking->lock());
  const std::jthread other{[&] {
    std::this_thread::sleep_for(std::chrono::milliseconds{5});
    asking.reset();
  }};
  EXPECT_TRUE(folder->lock());
}

TEST_P(FolderContract, secondHandle_cannotTakeTheLockUntilTheFirstGoes) {
  const auto second = openFolder(temporary / "inside");
  EXPECT_TRUE(folder->lock());
  EXPECT_TRUE(folder->lock());
  EXPECT_FALSE(second->lock());
  folder.reset();
  EXPECT_TRUE(second->lock());
}

TEST_P(FolderContract, removedRoot_noLongerExists) {
  EXPECT_TRUE(folder->exists());
  EXPECT_GT(folder->freeBytes(), 0U);
  fs::remove_all(temporary / "inside");
  EXPECT_FALSE(folder->exists());
  EXPECT_NE(codeOf([&] { folder->createFile("a"); }), 0);
}

TEST_P(FolderContract, modificationTime_isKeptToTheMillisecond) {
  for (const std::int64_t count : {1'779'278'400'123L, -86'399'999L}) {
    const Instant time{std::chrono::milliseconds{count}};
    folder->createFile("a")->close();
    folder->setModificationTime("a", time);
    EXPECT_EQ(folder->status("a")->modified, time);
  }
}

TEST_F(FolderTest, atomicWrite_failingAnywhereLeavesTheOldFileAlone) {
  FaultyFolder faulty{openFolder(temporary / "inside")};
  writeFileAtomically(faulty, "settings.json", "old");
  using enum FileOperation;
  for (const FileOperation operation : {create, write, sync, close, rename}) {
    faulty.faults().rule = failing(operation, ENOSPC);
    EXPECT_EQ(codeOf([&] { writeFileAtomically(faulty, "settings.json", "new"); }), ENOSPC);
    EXPECT_EQ(temporary.read("inside/settings.json"), "old");
    EXPECT_THAT(faulty.names(), ElementsAre("settings.json"))
        << "after operation " << int(operation);
  }
  faulty.faults().rule = [](FileOperation operation, const std::string&) {
    if (operation == write) throw ShortWrite{2, EIO};
  };
  EXPECT_EQ(codeOf([&] { writeFileAtomically(faulty, "settings.json", "new"); }), EIO);
  EXPECT_EQ(temporary.read("inside/settings.json"), "old");
  faulty.faults().rule = nullptr;
  writeFileAtomically(faulty, "settings.json", "new");
  EXPECT_EQ(temporary.read("inside/settings.json"), "new");
}

TEST_F(FolderTest, atomicWrite_powerThatFailsLeavesTheOldOrTheNewFile) {
  int olds = 0;
  forEachPowerFailure(
      [](Folder& folder) {
        folder.makeFolders("below");
        writeFileAtomically(folder, "below/settings.json", "old");
        folder.syncVolume();
      },
      [](Folder& folder) { writeFileAtomically(folder, "below/settings.json", "new"); },
      [&](Folder& folder, bool isDone) {
        const std::string left = folder.readFile("below/settings.json", 10);
        if (isDone || left != "old") {
          EXPECT_EQ(left, "new");
        } else {
          ++olds;
        }
      });
  EXPECT_GT(olds, 6);
}

TEST_P(FolderContract, atomicWrite_ofSeveralWritersLeavesOneWholeFile) {
  const auto contentOf = [](char letter) { return std::string(300'000, letter); };
  std::atomic<int> working = 2;
  const auto writer = [&](char letter) {
    // As another process, which opens the folder itself.
    const auto own = openFolder(temporary / "inside");
    for (int i = 0; i < 60; ++i) writeFileAtomically(*own, "cache.jsonl", contentOf(letter));
    --working;
  };
  writeFileAtomically(*folder, "cache.jsonl", contentOf('a'));
  std::thread first{writer, 'a'};
  std::thread second{writer, 'b'};
  int looks = 0;
  for (; working > 0; ++looks) {
    const std::string seen = folder->readFile("cache.jsonl", 1'000'000);
    if (seen == contentOf(seen.front())) continue;
    ADD_FAILURE() << "half a file of " << seen.size() << " bytes";
    break;
  }
  first.join();
  second.join();
  EXPECT_GT(looks, 0);
  EXPECT_THAT(folder->names(), ElementsAre("cache.jsonl"));
}

TEST_P(FolderContract, leftOversOfKilledWriters_goWhenTheyAreOld) {
  const auto old = std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now()) -
                   std::chrono::hours{2};
  for (const char* const name :
       {"a.0123456789ab.json.part", "a.0123456789ax.json.part", "a.json.part", "b.json",
        "b.0123456789ab.json.part", "a.0123456789ab.json", "a.fedcba987654.json.part"}) {
    put(*folder, name, "x");
    folder->setModificationTime(name, old);
  }
  folder->setModificationTime("a.fedcba987654.json.part", old + std::chrono::hours{2});
  writeFileAtomically(*folder, "a.json", "new");
  removeLeftOvers(*folder, "a.json");
  EXPECT_THAT(folder->names(), ElementsAre("a.0123456789ab.json", "a.0123456789ax.json.part",
                                           "a.fedcba987654.json.part", "a.json", "a.json.part",
                                           "b.0123456789ab.json.part", "b.json"));
  EXPECT_TRUE(isTemporaryOf("plain.0123456789ab.part", "plain"));
  EXPECT_FALSE(isTemporaryOf("a.json", "a.json"));
}

TEST(PathComponent, name_isSafeOnlyWhenItStaysInItsFolder) {
  for (const std::string name : {"a", "...", "..a", "a b", "Фото", "-"})
    EXPECT_TRUE(isSafePathComponent(name)) << name;
  for (const std::string& name : {std::string{}, std::string{"."}, std::string{".."},
                                  std::string{"a/b"}, std::string{"/"}, std::string{"a\0", 2}}) {
    EXPECT_FALSE(isSafePathComponent(name)) << name;
  }
}

}  // namespace
}  // namespace tavrix
