#include "settings/defaults/FileDefaults.h"

#include <gmock/gmock.h>

#include <cerrno>

#include "foundation/files/AtomicFile.h"
#include "foundation/tests/support/FaultyFolder.h"
#include "foundation/tests/support/TemporaryFolder.h"
#include "settings/defaults/DefaultsFile.h"
#include "settings/defaults/MemoryDefaults.h"

namespace tavrix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Kind = DefaultsFault::Kind;

class FileDefaultsTest : public testing::Test {
 protected:
  std::string directory() const { return home / "config/Tavrix"; }
  std::string stored() const { return home.read("config/Tavrix/defaults.json"); }
  void put(const std::string& text) const { home.write("config/Tavrix/defaults.json", text); }
  std::string path(const std::string& name = "defaults.json") const {
    return directory() + "/" + name;
  }
  /// Returns defaults whose folder fails according to a rule.
  FileDefaults faulty(const FaultRule& rule) const {
    return {directory(), [rule](const std::string& directory, bool) {
              std::filesystem::create_directories(directory);
              auto folder = std::make_unique<FaultyFolder>(openFolder(directory));
              folder->faults().rule = rule;
              return folder;
            }};
  }

  TemporaryFolder home;
};

/// Checks the behaviour common to all kinds of user defaults.
void expectToKeepObjects(UserDefaults& defaults) {
  EXPECT_THAT(defaults.keys(), IsEmpty());
  defaults.set("b", {2.5});
  defaults.set("a", {std::string{"text"}});
  defaults.apply({{"c", JsonValue{JsonValue::Array{}}}, {"b", JsonValue{3.0}}});
  EXPECT_THAT(defaults.keys(), ElementsAre("a", "b", "c"));
  EXPECT_EQ(defaults.number("b"), 3.0);
  EXPECT_EQ(defaults.text("a"), "text");
  EXPECT_EQ(defaults.number("a"), std::nullopt);
  EXPECT_EQ(defaults.text("b"), std::nullopt);
  defaults.remove("a");
  defaults.remove("unheard of");
  EXPECT_THAT(defaults.keys(), ElementsAre("b", "c"));
  EXPECT_THAT(defaults.takeFaults(), IsEmpty());
}

TEST(MemoryDefaults, objects_areKept) {
  MemoryDefaults defaults;
  expectToKeepObjects(defaults);
}

TEST_F(FileDefaultsTest, objects_areKeptAlsoForTheNextProcess) {
  FileDefaults defaults{directory()};
  expectToKeepObjects(defaults);
  EXPECT_THAT(FileDefaults{directory()}.keys(), ElementsAre("b", "c"));
  EXPECT_EQ(stored(), "{\n  \"b\": 3,\n  \"c\": []\n}\n");
}

TEST_F(FileDefaultsTest, looking_writesNothing) {
  FileDefaults defaults{directory()};
  EXPECT_EQ(defaults.object("a"), std::nullopt);
  defaults.apply({{"a", std::nullopt}, {"b", std::nullopt}});
  EXPECT_FALSE(home.has("config"));
}

TEST_F(FileDefaultsTest, sameObjectAgain_leavesTheFileAsThePersonWroteIt) {
  const std::string byHand = "{ \"eventGapHours\": 4 }";
  put(byHand);
  FileDefaults{directory()}.set("eventGapHours", {4.0});
  EXPECT_EQ(stored(), byHand);
}

TEST_F(FileDefaultsTest, keysOfOthers_areKeptAndKnownAfterAChange) {
  put(R"({"future":{"deep":[1,null]},"mine":1})");
  FileDefaults mine{directory()};
  FileDefaults other{directory()};
  other.set("theirs", {2.0});
  mine.set("mine", {3.0});
  EXPECT_EQ(mine.number("theirs"), 2.0);
  EXPECT_THAT(FileDefaults{directory()}.keys(), ElementsAre("future", "mine", "theirs"));
}

TEST_F(FileDefaultsTest, damagedFile_isToldLeftUntilAChangeAndThenKept) {
  const std::string damaged = "{\n  \"eventGapHours\": 4,\n  oops";
  put(damaged);
  for (int look = 0; look < 2; ++look) {
    FileDefaults looking{directory()};
    EXPECT_THAT(looking.keys(), IsEmpty());
    EXPECT_THAT(looking.takeFaults(),
                ElementsAre(DefaultsFault{
                    .kind = Kind::damaged, .path = path(), .position = JsonPosition{3, 3}}));
    EXPECT_EQ(stored(), damaged);
  }
  for (const std::string name : {"defaults.json.damaged", "defaults.json.damaged-2"}) {
    put(damaged);
    FileDefaults changing{directory()};
    changing.takeFaults();
    changing.set("eventGapKm", {5.0});
    EXPECT_THAT(
        changing.takeFaults(),
        ElementsAre(DefaultsFault{.kind = Kind::setAside, .path = path(), .keptAs = path(name)}));
    EXPECT_EQ(home.read("config/Tavrix/" + name), damaged);
    EXPECT_THAT(FileDefaults{directory()}.keys(), ElementsAre("eventGapKm"));
  }
}

TEST_F(FileDefaultsTest, fileBeyondAllBounds_countsAsDamaged) {
  put("{\"a\":\"" + std::string(DefaultsFile::largestBytes, 'x') + "\"}");
  FileDefaults defaults{directory()};
  EXPECT_THAT(defaults.takeFaults(),
              ElementsAre(DefaultsFault{.kind = Kind::damaged, .path = path()}));
  defaults.set("b", {1.0});
  EXPECT_TRUE(home.has("config/Tavrix/defaults.json.damaged"));
  EXPECT_THAT(FileDefaults{directory()}.keys(), ElementsAre("b"));
}

TEST_F(FileDefaultsTest, fileThatCannotBeRead_isNeverWrittenOver) {
  std::filesystem::create_directories(path());
  home.write("config/Tavrix/defaults.json/inside", "precious");
  FileDefaults defaults{directory()};
  const DefaultsFault fault{.kind = Kind::notFile, .path = path(), .code = EISDIR};
  EXPECT_THAT(defaults.takeFaults(), ElementsAre(fault));
  defaults.set("a", {1.0});
  EXPECT_THAT(defaults.takeFaults(), ElementsAre(fault));
  EXPECT_EQ(defaults.number("a"), 1.0) << "it counts for this process";
  EXPECT_EQ(home.read("config/Tavrix/defaults.json/inside"), "precious");
}

TEST_F(FileDefaultsTest, placeThatCannotBeMade_losesNoChangeOfThisProcess) {
  home.write("config", "a file where the folder should be");
  FileDefaults defaults{directory()};
  EXPECT_THAT(defaults.takeFaults(), IsEmpty());
  defaults.set("a", {1.0});
  EXPECT_THAT(
      defaults.takeFaults(),
      ElementsAre(DefaultsFault{.kind = Kind::unwritable, .path = path(), .code = ENOTDIR}));
  EXPECT_EQ(defaults.number("a"), 1.0);
}

TEST_F(FileDefaultsTest, refusedWrite_leavesTheWholeEarlierFileAndIsTriedAgain) {
  struct Row {
    FileOperation operation;
    int code;
    bool isTemporary = true;  ///< the rule applies to the temporary file that is written first
  };
  const std::vector<Row> rows{{FileOperation::create, EROFS},
                              {FileOperation::write, ENOSPC},
                              {FileOperation::sync, EIO},
                              {FileOperation::close, EDQUOT},
                              {FileOperation::rename, EACCES, false}};
  for (const Row& row : rows) {
    put("{\n  \"before\": 1\n}\n");
    bool isFull = true;
    FileDefaults defaults = faulty([&](FileOperation operation, const std::string& name) {
      const std::string target = "defaults.json";
      const bool isMeant = row.isTemporary ? isTemporaryOf(name, target) : name == target;
      if (!isFull || operation != row.operation || !isMeant) return;
      if (operation == FileOperation::write) throw ShortWrite{5, row.code};
      throw FileError{operation, name, row.code};
    });
    defaults.set("a", {1.0});
    defaults.set("b", {2.0});
    EXPECT_THAT(
        defaults.takeFaults(),
        ElementsAre(DefaultsFault{.kind = Kind::unwritable, .path = path(), .code = row.code}))
        << "told once";
    EXPECT_THAT(defaults.keys(), ElementsAre("a", "b", "before"));
    EXPECT_EQ(stored(), "{\n  \"before\": 1\n}\n");
    EXPECT_THAT(openFolder(directory())->names(),
                testing::Not(testing::Contains(testing::EndsWith(".part"))));
    isFull = false;
    defaults.set("c", {3.0});
    EXPECT_THAT(defaults.takeFaults(), IsEmpty());
    EXPECT_THAT(FileDefaults{directory()}.keys(), ElementsAre("a", "b", "before", "c"));
  }
}

TEST_F(FileDefaultsTest, objectTooLargeToBeReadBack_isKeptHereAndBlocksNothing) {
  FileDefaults defaults{directory()};
  JsonValue deep;
  for (int level = 0; level < 100; ++level) deep = {JsonValue::Array{deep}};
  for (const JsonValue& object : {JsonValue{std::string(2U << 20U, 'x')}, deep}) {
    defaults.set("large", object);
    EXPECT_THAT(defaults.takeFaults(),
                ElementsAre(DefaultsFault{.kind = Kind::tooLarge, .path = path()}));
  }
  defaults.set("small", {1.0});
  EXPECT_THAT(defaults.takeFaults(), IsEmpty());
  EXPECT_EQ(defaults.object("large"), deep);
  EXPECT_THAT(FileDefaults{directory()}.keys(), ElementsAre("small"));
}

TEST_F(FileDefaultsTest, link_staysALinkToTheFileThatIsReadAndWritten) {
  const std::string byHand = "\xEF\xBB\xBF{\"a\":1}";
  home.write("dotfiles/tavrix.json", byHand);
  std::filesystem::create_directories(directory());
  std::filesystem::create_symlink("step", path());
  std::filesystem::create_symlink("../../dotfiles/tavrix.json", path("step"));
  FileDefaults defaults{directory()};
  EXPECT_EQ(defaults.number("a"), 1.0);
  defaults.set("b", {2.0});
  EXPECT_THAT(defaults.takeFaults(), IsEmpty());
  EXPECT_TRUE(std::filesystem::is_symlink(path()));
  EXPECT_TRUE(std::filesystem::is_symlink(path("step")));
  EXPECT_EQ(home.read("dotfiles/tavrix.json"), "{\n  \"a\": 1,\n  \"b\": 2\n}\n");
  EXPECT_THAT(openFolder(home / "dotfiles")->names(), ElementsAre("tavrix.json"));

  home.write("dotfiles/tavrix.json", "oops");
  FileDefaults damaged{directory()};
  damaged.takeFaults();
  damaged.set("c", {3.0});
  EXPECT_EQ(home.read("dotfiles/tavrix.json.damaged"), "oops");
  EXPECT_THAT(FileDefaults{directory()}.keys(), ElementsAre("c"));
}

TEST_F(FileDefaultsTest, linkToAMissingFile_createsItOnlyInAnExistingFolder) {
  std::filesystem::create_directories(directory());
  std::filesystem::create_directories(home / "dotfiles");
  std::filesystem::create_symlink(home / "dotfiles/new.json", path());
  FileDefaults defaults{directory()};
  EXPECT_THAT(defaults.takeFaults(), IsEmpty());
  defaults.set("a", {1.0});
  EXPECT_THAT(defaults.takeFaults(), IsEmpty());
  EXPECT_EQ(home.read("dotfiles/new.json"), "{\n  \"a\": 1\n}\n");
  EXPECT_TRUE(std::filesystem::is_symlink(path()));

  std::filesystem::remove_all(home / "dotfiles");
  defaults.set("b", {1.0});
  EXPECT_THAT(defaults.takeFaults(),
              ElementsAre(DefaultsFault{.kind = Kind::unwritable, .path = path(), .code = ENOENT}));
  EXPECT_FALSE(home.has("dotfiles"));
}

TEST_F(FileDefaultsTest, linkThatLeadsToNoFile_isReportedAsWhatItIs) {
  struct Row {
    std::string target;
    DefaultsFault fault;
  };
  std::filesystem::create_directories(home / "folder");
  const DefaultsFault folder{
      .kind = Kind::notFile, .path = path(), .code = EISDIR, .target = home / "folder"};
  const std::vector<Row> rows{
      {home / "folder", folder},
      {home / "folder/", folder},
      {"defaults.json", {.kind = Kind::notFile, .path = path(), .code = ELOOP}},
  };
  for (const Row& row : rows) {
    std::filesystem::create_directories(directory());
    std::filesystem::create_symlink(row.target, path());
    FileDefaults defaults{directory()};
    EXPECT_THAT(defaults.takeFaults(), ElementsAre(row.fault));
    defaults.set("a", {1.0});
    EXPECT_THAT(defaults.takeFaults(), ElementsAre(row.fault));
    EXPECT_TRUE(losesChange(row.fault));
    EXPECT_TRUE(std::filesystem::is_symlink(path()));
    std::filesystem::remove_all(directory());
  }
}

TEST(DefaultsFolder, goesByTheBaseDirectories) {
  EXPECT_EQ(defaultsFolderPath("/c", "/h"), "/c/Tavrix");
  EXPECT_EQ(defaultsFolderPath("relative", "/h"), "/h/.config/Tavrix");
  EXPECT_EQ(defaultsFolderPath(std::nullopt, "/h"), "/h/.config/Tavrix");
  EXPECT_EQ(defaultsFolderPath("", "relative"), std::nullopt);
  EXPECT_EQ(defaultsFolderPath(std::nullopt, std::nullopt), std::nullopt);
}

}  // namespace
}  // namespace tavrix
