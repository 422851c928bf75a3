#include "device/thumbnails/PreviewFiles.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "device/thumbnails/tests/support/ThumbnailBench.h"
#include "foundation/Uuid.h"
#include "foundation/tests/support/FaultyFolder.h"

namespace tavrix {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using FailureKind = PreviewFailure::Kind;

/// A phone of texts, each listed with ten bytes and delivered in two pieces.
struct PreviewFilesTest : testing::Test {
  PreviewFilesTest() { start(); }
  ~PreviewFilesTest() override { reading.open(); }

  class Phone : public MediaSource {
   public:
    Phone(PreviewFilesTest& test, std::stop_token stop) : test_(test), stop_(std::move(stop)) {}
    void download(const MediaAsset& asset, DownloadDestination& destination) override {
      const std::string id{asset.id()};
      const std::string& content = test_.phone.contains(id) ? test_.phone[id] : "";
      test_.downloads.push_back(id);
      if (content.empty()) throw SourceError{SourceError::Kind::unreadable, id, EIO};
      for (const std::string& piece : {content.substr(0, 4), content.substr(4)}) {
        destination.append(std::as_bytes(std::span{piece}));
        test_.reading.pass(stop_);
      }
    }

   private:
    PreviewFilesTest& test_;
    std::stop_token stop_;
  };

  /// Starts the program once more.
  void start(std::uint64_t maxBytes = 1000) {
    files.reset();
    PreviewFolder::Setup setup{folder / "thumbnails", maxBytes};
    setup.open = [this](const std::string& path) {
      auto opened = std::make_unique<FaultyFolder>(openFolder(path));
      opened->faults() = faults;
      return opened;
    };
    files = std::make_unique<PreviewFiles>(PreviewFiles::Setup{loop, std::move(setup)});
    plugIn();
  }
  void plugIn(const std::string& key = "P") {
    files->setSource(key,
                     [this](std::stop_token stop) { return std::make_unique<Phone>(*this, stop); });
  }
  static MediaAsset asset(const std::string& name, std::uint64_t bytes = 10) {
    return {"D/" + name,  name,         std::nullopt, MediaKind::photo, bytes,
            std::nullopt, std::nullopt, false,        std::nullopt,     std::nullopt};
  }
  PreviewRequest request(const MediaAsset& asset) {
    return files->request(asset,
                          {[this](const PreviewResult& result) { results.push_back(result); },
                           [this](const PreviewFiles::Progress& progress) {
                             received.push_back(progress.received);
                             EXPECT_EQ(progress.total, 10);
                           }});
  }
  PreviewResult result() {
    EXPECT_TRUE(loop.runUntil([&] { return !results.empty(); }));
    return results.empty() ? PreviewResult{} : std::exchange(results, {}).front();
  }
  PreviewResult resultOf(const MediaAsset& asset) {
    const auto kept = request(asset);
    return result();
  }
  std::string pathOf(const std::string& name, std::uint64_t bytes = 10) {
    const PreviewResult found = resultOf(asset(name, bytes));
    const auto* const path = std::get_if<std::string>(&found);
    EXPECT_NE(path, nullptr) << name;
    return path == nullptr ? "" : *path;
  }
  void awaitReading() {
    EXPECT_TRUE(loop.runUntil([&] { return reading.waiting() > 0; }));
  }
  /// Returns the names of all files in the folder of previews, except locks.
  std::vector<std::string> onDisk() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator{folder / "thumbnails/previews"}) {
      if (entry.is_regular_file() && entry.path().extension() != ".lock")
        names.push_back(entry.path().filename());
    }
    std::sort(names.begin(), names.end());
    return names;
  }

  TemporaryFolder folder;
  ManualMainLoop loop;
  Gate reading{loop};
  FolderFaults faults;
  std::map<std::string, std::string> phone{{"D/a.HEIC", "aaaaaaaaaa"},
                                           {"D/b.MOV", "bbbbbbbbbb"},
                                           {"D/c.jpg", "cccccccccc"},
                                           {"D/d.jpg", "dddddddddd"}};
  std::vector<std::string> downloads;
  std::vector<std::uint64_t> received;
  std::vector<PreviewResult> results;
  std::unique_ptr<PreviewFiles> files;
};

TEST_F(PreviewFilesTest, file_isFetchedOnceUnderItsNameAndRemovedAtTheEnd) {
  reading.close();
  const auto first = request(asset("b.MOV"));
  awaitReading();
  EXPECT_TRUE(loop.runUntil([&] { return !received.empty(); }));
  EXPECT_EQ(files->openingAssets(), std::set<std::string>{"D/b.MOV"});
  EXPECT_THAT(onDisk(), ElementsAre(".part"));
  reading.open();
  const std::string path = std::get<std::string>(result());
  EXPECT_EQ(received.front(), 4);
  EXPECT_THAT(files->openingAssets(), IsEmpty());
  EXPECT_EQ(fs::path{path}.filename(), "b.MOV");
  EXPECT_EQ(folder.read(path.substr(folder.path().size() + 1)), "bbbbbbbbbb");
  const fs::path own = fs::path{path}.parent_path().parent_path();
  for (const fs::path& each : {own, own.parent_path(), own.parent_path().parent_path()}) {
    EXPECT_EQ(fs::status(each).permissions(), fs::perms::owner_all) << each;
  }
  EXPECT_EQ(pathOf("b.MOV"), path);
  EXPECT_THAT(downloads, ElementsAre("D/b.MOV"));
  fs::remove_all(folder / "thumbnails");  // the user empties the cache
  EXPECT_TRUE(fs::exists(pathOf("b.MOV")));
  files.reset();
  EXPECT_TRUE(fs::is_empty(folder / "thumbnails/previews"));
}

TEST_F(PreviewFilesTest, failure_isReportedAndLeavesNothing) {
  const auto rule = [](FaultRule made) {
    FolderFaults broken;
    broken.rule = std::move(made);
    return broken;
  };
  FolderFaults full;
  full.freeBytes = [] { return std::uint64_t{9}; };
  struct Row {
    std::string content;
    FolderFaults faults;
    PreviewFailure failure;
  };
  const std::string good = "0123456789";
  const std::vector<Row> rows{
      {"012345678", {}, {FailureKind::wrongSize}},
      {"0123456789A", {}, {FailureKind::wrongSize}},
      {"", {}, {FailureKind::sourceFailed, SourceError::Kind::unreadable, EIO}},
      {good, full, {FailureKind::diskFull, {}, ENOSPC}},
      {good,
       rule([](FileOperation operation, const std::string&) {
         if (operation == FileOperation::write) throw ShortWrite{2, ENOSPC};
       }),
       {FailureKind::diskFull, {}, ENOSPC}},
      {good, rule(failing(FileOperation::close, EIO)), {FailureKind::notWritable, {}, EIO}},
      {good, rule(failing(FileOperation::rename, EACCES)), {FailureKind::notWritable, {}, EACCES}}};
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(static_cast<int>(row.failure.kind)) + row.content);
    faults = row.faults;
    start();
    phone["D/x.jpg"] = row.content;
    EXPECT_EQ(resultOf(asset("x.jpg")), PreviewResult{row.failure});
    EXPECT_THAT(onDisk(), IsEmpty());
    faults = {};
    start();
    phone["D/x.jpg"] = good;
    EXPECT_TRUE(fs::exists(pathOf("x.jpg")));
  }
}

TEST_F(PreviewFilesTest, nameOfThePhone_isNeverAPath) {
  const std::string base = folder / "thumbnails/previews";
  for (const std::string& name :
       {std::string{"../../../x.jpg"}, std::string{"/etc/x.png"}, std::string{"a\nb\x01.mov"},
        std::string{"..jpg"}, std::string(300, 'x') + ".HEIC"}) {
    phone["D/" + name] = "0123456789";
    const fs::path path = pathOf(name);
    EXPECT_EQ(path, path.lexically_normal());
    EXPECT_EQ(path.parent_path().parent_path().parent_path(), base) << path;
    EXPECT_EQ(mediaKindOfFileName(path.string()), mediaKindOfFileName(name));
    EXPECT_EQ(path.string().find_first_of("\n\x01"), std::string::npos);
  }
  for (const char* const name : {"x.desktop", "jpg", "x.jpg/.."}) {
    EXPECT_EQ(resultOf(asset(name)), PreviewResult{PreviewFailure{FailureKind::notAPicture}});
  }
}

TEST_F(PreviewFilesTest, withdrawnRequest_stopsInTheMiddleOfItsFile) {
  reading.close();
  auto first = request(asset("a.HEIC"));
  awaitReading();
  auto second = request(asset("b.MOV"));
  const auto third = request(asset("c.jpg"));
  first = {};
  second.withdraw();
  reading.open();
  EXPECT_EQ(fs::path{std::get<std::string>(result())}.filename(), "c.jpg");
  EXPECT_THAT(downloads, ElementsAre("D/a.HEIC", "D/c.jpg"));
  EXPECT_THAT(onDisk(), ElementsAre("c.jpg"));
}

TEST_F(PreviewFilesTest, receiver_mayEndTheOwnerAndItsFiles) {
  bool isAnswered = false;
  const auto first = files->request(asset("a.HEIC"), {[&](const PreviewResult&) {
                                      isAnswered = true;
                                      files.reset();
                                    }});
  const auto second = request(asset("b.MOV"));
  ASSERT_TRUE(loop.runUntil([&] { return isAnswered; }));
  loop.runDue();
  EXPECT_THAT(results, IsEmpty());
  EXPECT_THAT(onDisk(), IsEmpty());
}

TEST_F(PreviewFilesTest, limit_removesTheFilesUsedLongestAgo) {
  start(25);
  pathOf("a.HEIC");
  pathOf("b.MOV");
  pathOf("a.HEIC");
  pathOf("c.jpg");
  EXPECT_THAT(onDisk(), ElementsAre("a.HEIC", "c.jpg"));
  phone["D/long.mov"] = std::string(30, 'l');
  const auto larger = files->request(
      asset("long.mov", 30), {[this](const PreviewResult& found) { results.push_back(found); }});
  result();
  EXPECT_THAT(onDisk(), ElementsAre("long.mov"));
  pathOf("a.HEIC");
  EXPECT_THAT(onDisk(), ElementsAre("a.HEIC"));
}

TEST_F(PreviewFilesTest, start_removesWhatDeadProcessesHaveLeftAndNothingElse) {
  files.reset();
  PreviewFolder other{{.thumbnailFolder = folder / "thumbnails"}};
  const std::string alive = other.add("key", "alive.jpg", 0, [](WritableFile&) {});
  const std::string previews = "thumbnails/previews/";
  const std::string killed = previews + randomUuid().text();
  folder.write(killed + ".lock", "");
  folder.write(killed + "/1/killed.jpg", "x");
  folder.write(previews + randomUuid().text() + "/1/.part", "x");
  folder.write(previews + randomUuid().text() + ".lock", "");
  folder.write(previews + "notes/mine.jpg", "x");
  start();
  pathOf("a.HEIC");
  EXPECT_THAT(onDisk(), ElementsAre("a.HEIC", "alive.jpg", "mine.jpg"));
  files.reset();
  const auto entries = std::distance(fs::directory_iterator{folder / previews}, {});
  EXPECT_EQ(entries, 3) << "the other process's folder and lock, and the user's folder";
  EXPECT_TRUE(fs::exists(alive));
}

TEST_F(PreviewFilesTest, transfer_hasTheSourceForItself) {
  const std::string kept = pathOf("a.HEIC");
  std::map<std::string, std::string> landed{{"D/c.jpg", "/to/c.jpg"}};
  reading.close();
  auto reader = request(asset("b.MOV"));
  awaitReading();
  downloads.clear();
  files->beginTransfer([&](const MediaAsset& file) {
    const auto found = landed.find(std::string{file.id()});
    return found == landed.end() ? std::nullopt : std::optional{found->second};
  });
  reading.open();
  const auto waiting = request(asset("d.jpg"));
  EXPECT_EQ(pathOf("c.jpg"), "/to/c.jpg");
  EXPECT_EQ(pathOf("a.HEIC"), kept);
  landed["D/b.MOV"] = "/to/b.MOV";
  files->landedFilesChanged();
  EXPECT_EQ(result(), PreviewResult{"/to/b.MOV"});
  files->setSource("P", nullptr);  // the phone leaves, and the run waits for it
  EXPECT_EQ(pathOf("a.HEIC"), kept);
  EXPECT_EQ(files->openingAssets(), std::set<std::string>{"D/d.jpg"});
  EXPECT_THAT(downloads, IsEmpty());
  plugIn();
  files->endTransfer();
  EXPECT_EQ(fs::path{std::get<std::string>(result())}.filename(), "d.jpg");
}

TEST_F(PreviewFilesTest, sourceThatLeaves_failsTheRequestsButKeepsTheFiles) {
  const PreviewResult gone{PreviewFailure{FailureKind::noSource}};
  const std::string kept = pathOf("a.HEIC");
  reading.close();
  const auto reader = request(asset("b.MOV"));
  awaitReading();
  files->setSource("P", nullptr);
  EXPECT_EQ(result(), gone);
  reading.open();
  EXPECT_EQ(pathOf("a.HEIC"), kept);
  EXPECT_EQ(resultOf(asset("c.jpg")), gone);
  const auto former = request(asset("c.jpg"));
  plugIn("Q");
  EXPECT_EQ(result(), gone) << "another phone may have another file of this id";
  EXPECT_NE(pathOf("a.HEIC"), kept);
}

}  // namespace
}  // namespace tavrix
