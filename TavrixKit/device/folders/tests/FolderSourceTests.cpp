#include <fcntl.h>
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <sys/fsuid.h>
#include <sys/stat.h>
#include <unistd.h>

#include <functional>
#include <thread>

#include "device/folders/FolderCatalogue.h"
#include "device/folders/FolderMediaSource.h"
#include "device/metadata/tests/support/SampleFiles.h"
#include "foundation/tests/support/TemporaryFolder.h"
#include "media/Snapshot.h"
#include "media/tests/MediaSourceContract.h"

namespace tavrix {
namespace {

using SourceFolder::LeftOut;
using SourceFolder::Reason;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

struct FolderSourceTest : testing::Test {
  FolderCatalogue read(std::function<void(const MetadataPass::Progress&)> progress = {}) const {
    return FolderCatalogue::read(folder / "DCIM", {.phoneKey = "folder",
                                                   .directory = folder / "state",
                                                   .now = [] { return Instant{}; },
                                                   .progress = std::move(progress)});
  }
  static std::vector<std::string> idsOf(const FolderCatalogue& catalogue) {
    std::vector<std::string> ids;
    for (const auto& asset : Snapshot::assetsOf(catalogue.items, TimeZone::utc())) {
      ids.emplace_back(asset.id());
    }
    return ids;
  }

  TemporaryFolder folder;
};

TEST_F(FolderSourceTest, kindsOfFolders_areRecognised) {
  for (const char* const path : {"card/DCIM/100APPLE/a.JPG", "small/dcim/x/a.JPG",
                                 "old/100APPLE/a.JPG", "new/202605__/a.JPG", "plain/Wedding/a.JPG",
                                 "plain/099APPLE/a.JPG", "plain/100APPLES/a.JPG"}) {
    folder.write(path, "");
  }
  folder.write("plain/100CANON", "a file");
  const auto found = [&](const std::string& path) {
    return SourceFolder::catalogueFolder(folder / path);
  };
  EXPECT_EQ(found("card"), folder / "card/DCIM");
  EXPECT_EQ(found("card/DCIM"), folder / "card/DCIM");
  EXPECT_EQ(found("small"), folder / "small/dcim");
  EXPECT_EQ(found("small/dcim/"), folder / "small/dcim/");
  EXPECT_EQ(found("old"), folder / "old");
  EXPECT_EQ(found("new"), folder / "new");
  EXPECT_EQ(found("card/DCIM/100APPLE"), folder / "card/DCIM/100APPLE");
  EXPECT_EQ(found("plain/099APPLE"), std::nullopt);
  for (const char* const name : {"100apple", "100APPLE", "999_____", "12345678"}) {
    EXPECT_TRUE(SourceFolder::isCameraFolderName(name)) << name;
  }
  for (const char* const name : {"1234APPLE", "099APPLE", "100APPL", "100APP-E", "10OAPPLE", ""}) {
    EXPECT_FALSE(SourceFolder::isCameraFolderName(name)) << name;
  }
  EXPECT_EQ(found("plain"), std::nullopt);
  EXPECT_THROW(found("missing"), FileError);
  EXPECT_EQ(SourceFolder::phoneKey(folder / "card"),
            SourceFolder::phoneKey(folder / "old/../card/"));
  EXPECT_NE(SourceFolder::phoneKey(folder / "card"), SourceFolder::phoneKey(folder / "old"));
}

TEST_F(FolderSourceTest, catalogue_isInStableOrderWithAllThatFilesTell) {
  for (const auto& sample : testbytes::sampleFiles()) {
    folder.write("DCIM/100APPLE/" + sample.name, sample.bytes);
  }
  folder.write("DCIM/loose.txt", "text");
  folder.write("DCIM/101APPLE/B.AAE", "x");
  folder.write("DCIM/101APPLE/inner/C.JPG", "no picture");
  folder.write("DCIM/101APPLE/A.HEIC", "");
  const FolderCatalogue catalogue = read();
  const auto ids = idsOf(catalogue);
  const std::size_t samples = testbytes::sampleFiles().size();
  ASSERT_EQ(ids.size(), samples + 4);
  EXPECT_EQ(ids.front(), "loose.txt");
  EXPECT_TRUE(std::is_sorted(ids.begin() + 1, ids.end()));
  EXPECT_THAT((std::vector<std::string>{ids.end() - 3, ids.end()}),
              ElementsAre("101APPLE/A.HEIC", "101APPLE/B.AAE", "101APPLE/inner/C.JPG"));
  for (const auto& sample : testbytes::sampleFiles()) {
    const auto found = std::find_if(catalogue.items.begin(), catalogue.items.end(),
                                    [&](const auto& item) { return item.name == sample.name; });
    ASSERT_NE(found, catalogue.items.end());
    EXPECT_EQ(metadataOf(*found), sample.expected) << sample.name;
    EXPECT_EQ(found->size, sample.bytes.size());
    EXPECT_EQ(found->dir, "100APPLE");
    EXPECT_TRUE(found->itemDate.has_value());
  }
  EXPECT_THAT(catalogue.leftOut, ElementsAre());
  EXPECT_EQ(read().items, catalogue.items);
  // The two pictures without a size are not remembered.
  EXPECT_EQ(read().progress.hits, ids.size() - 2);
}

TEST_F(FolderSourceTest, foldersThatDifferByCaseAlone_areNoneTakenForTheOther) {
  folder.write("card/DCIM/100APPLE/a.JPG", "x");
  folder.write("card/dcim/100APPLE/b.JPG", "x");
  folder.write("card/DCIM.txt", "x");
  EXPECT_EQ(SourceFolder::catalogueFolder(folder / "card"), folder / "card/DCIM");
  EXPECT_THAT(SourceFolder::otherCatalogueFolders(folder / "card"),
              ElementsAre(folder / "card/dcim"));
  EXPECT_THAT(SourceFolder::otherCatalogueFolders(folder / "card/DCIM"), ElementsAre());
}

TEST_F(FolderSourceTest, treeOfManyFolders_isListedInOneOrder) {
  std::vector<std::string> paths;
  for (int outer = 100; outer < 140; ++outer) {
    for (const char* const name : {"/IMG_1.JPG", "/inner/IMG_1.JPG", "/inner/deep/IMG_1.JPG"}) {
      paths.push_back(std::to_string(outer) + "APPLE" + name);
      folder.write("DCIM/" + paths.back(), "x");
    }
  }
  for (int i = 0; i < 5; ++i) {
    const auto listing = SourceFolder::list(folder / "DCIM");
    EXPECT_TRUE(listing.isComplete);
    EXPECT_EQ(listing.paths, paths);
  }
}

TEST_F(FolderSourceTest, listingThatIsStopped_endsAtOnce) {
  // An endless tree.
  std::stop_source stop;
  int looks = 0;
  const auto entries = [&](const std::string&) {
    if (++looks == 3) stop.request_stop();
    return std::vector<FolderEntry>{{"100APPLE", {FileStatus::Type::folder, 0, {}}},
                                    {"101APPLE", {FileStatus::Type::folder, 0, {}}},
                                    {"a.JPG", {FileStatus::Type::file, 1, {}}}};
  };
  EXPECT_FALSE(SourceFolder::list(entries, stop.get_token()).isComplete);
  EXPECT_EQ(looks, 3);

  for (int i = 0; i < 300; ++i) folder.write(fmt::format("DCIM/100APPLE/{}.JPG", i), "x");
  const auto catalogue = FolderCatalogue::read(
      folder / "DCIM",
      {.phoneKey = "folder", .directory = folder / "state", .now = [] { return Instant{}; }},
      stop.get_token());
  EXPECT_FALSE(catalogue.isComplete);
  EXPECT_TRUE(catalogue.isKept);
  EXPECT_THAT(catalogue.items, ElementsAre());
}

TEST_F(FolderSourceTest, failureThatIsNoFolders_endsTheListing) {
  struct CableGone {};
  const auto entries = [](const std::string& path) {
    if (!path.empty()) throw CableGone{};
    return std::vector<FolderEntry>{{"100APPLE", {FileStatus::Type::folder, 0, {}}}};
  };
  EXPECT_THROW(SourceFolder::list(entries), CableGone);
}

TEST_F(FolderSourceTest, whatIsNoPictureOfThePhone_isLeftOutAndSaid) {
  folder.write("outside/secret.JPG", "x");
  for (const char* const path :
       {"100APPLE/a.JPG", ".DS_Store", "100APPLE/._a.JPG", ".Trashes/b.JPG",
        "100APPLE/.c.HEIC.icloud", "100APPLE/d.JPG.nextcloud", "101APPLE/locked/e.JPG"}) {
    folder.write(std::string{"DCIM/"} + path, "x");
  }
  std::filesystem::create_directory_symlink("..", folder / "DCIM/100APPLE/loop");
  std::filesystem::create_directory_symlink(folder / "outside", folder / "DCIM/102APPLE");
  std::filesystem::create_symlink("a.JPG", folder / "DCIM/100APPLE/f.JPG");
  ASSERT_EQ(::mkfifo((folder / "DCIM/100APPLE/pipe.JPG").c_str(), 0600), 0);
  std::string deep = "DCIM";
  for (int i = 0; i < 40; ++i) deep += "/d";
  folder.write(deep + "/g.JPG", "x");
  const FolderCatalogue catalogue = read();
  EXPECT_THAT(idsOf(catalogue), ElementsAre("100APPLE/a.JPG", "101APPLE/locked/e.JPG"));
  EXPECT_THAT(catalogue.leftOut,
              UnorderedElementsAre(
                  LeftOut{".DS_Store", Reason::hidden}, LeftOut{".Trashes", Reason::hidden},
                  LeftOut{"100APPLE/._a.JPG", Reason::hidden},
                  LeftOut{"100APPLE/.c.HEIC.icloud", Reason::placeholder},
                  LeftOut{"100APPLE/d.JPG.nextcloud", Reason::placeholder},
                  LeftOut{"100APPLE/f.JPG", Reason::link}, LeftOut{"100APPLE/loop", Reason::link},
                  LeftOut{"102APPLE", Reason::link}, LeftOut{"100APPLE/pipe.JPG", Reason::special},
                  LeftOut{"d/d/d/d/d/d/d/d/d/d/d/d/d/d/d/d/d", Reason::tooDeep}));
}

TEST_F(FolderSourceTest, entryOfWhichNothingIsKnown_isNamedAndMissed) {
  using Type = FileStatus::Type;
  const auto entries = [](const std::string& path) -> std::vector<FolderEntry> {
    if (path == "closed") throw FileError{FileOperation::list, path, EIO};
    if (!path.empty()) return {{"in.JPG", {Type::file, 1, {}}}, {"lost.JPG", {}, ESTALE}};
    return {{".hidden", {}, EIO},
            {"a.JPG", {Type::file, 1, {}}},
            {"b.JPG", {}, EIO},
            {"c.JPG", {}, EACCES},
            {"closed", {Type::folder, 0, {}}, EIO},
            {"link", {Type::link, 0, {}}, EIO},
            {"opens", {Type::folder, 0, {}}, EIO}};
  };
  const FolderCatalogue catalogue =
      FolderCatalogue::of(SourceFolder::list(entries),
                          {.phoneKey = "x", .directory = {}, .now = [] { return Instant{}; }},
                          [](const auto&, auto) { return MediaMetadata{}; });
  EXPECT_THAT(idsOf(catalogue), ElementsAre("a.JPG", "opens/in.JPG"));
  EXPECT_THAT(
      catalogue.leftOut,
      UnorderedElementsAre(
          LeftOut{".hidden", Reason::hidden}, LeftOut{"b.JPG", Reason::unreadableFile},
          LeftOut{"c.JPG", Reason::unreadableFile}, LeftOut{"closed", Reason::unreadableFolder},
          LeftOut{"link", Reason::link}, LeftOut{"opens/lost.JPG", Reason::unreadableFile}));
  EXPECT_EQ(catalogue.unreadFolders(), 3U) << "the folder itself and two in it";
}

TEST_F(FolderSourceTest, sourceThatClaimsTheImpossible_isReadWithinItsLimits) {
  using Type = FileStatus::Type;
  // Each folder has 300 more, without end.
  std::size_t asked = 0;
  const auto listing = SourceFolder::list([&](const std::string&) {
    ++asked;
    std::vector<FolderEntry> entries;
    for (int i = 0; i < 300; ++i) entries.push_back({std::to_string(i), {Type::folder, 0, {}}});
    entries.push_back({"a.JPG", {Type::file, 1, {}}});
    return entries;
  });
  EXPECT_LE(asked, SourceFolder::maxFolders / 300 + 2);
  EXPECT_EQ(listing.items.size(), asked);
  EXPECT_THAT(listing.leftOut, testing::Each(testing::Field(&LeftOut::reason, Reason::tooMany)));
  EXPECT_TRUE(listing.leftOut.at(0).isUnseen());

  const auto odd = SourceFolder::list([](const std::string&) -> std::vector<FolderEntry> {
    return {{"a.MOV", {Type::file, INT64_MAX, {}}},
            {"b.MOV", {Type::file, SourceFolder::maxFileBytes, {}}},
            {std::string(5'000'000, 'c'), {Type::file, 1, {}}}};
  });
  EXPECT_EQ(odd.paths, std::vector<std::string>{"b.MOV"});
  EXPECT_THAT(odd.leftOut, ElementsAre(LeftOut{"a.MOV", Reason::tooLarge},
                                       LeftOut{std::string(60, 'c') + "…", Reason::longName}));
}

TEST_F(FolderSourceTest, folderThatTellsNamesAlone_isUnreadable) {
  namespace fs = std::filesystem;
  folder.write("DCIM/100APPLE/a.JPG", "x");
  folder.write("DCIM/101APPLE/a.JPG", "x");
  constexpr auto namesAlone = fs::perms::owner_read | fs::perms::others_read;
  const auto listed = [&](const std::string& closed) {
    SourceFolder::Listing listing;
    fs::permissions(folder / closed, namesAlone);
    std::exception_ptr failure;
    std::thread{[&] {
      // Root may read everything, so this thread accesses files as another user until it ends.
      if (::geteuid() == 0) ::setfsuid(65534);
      try {
        listing = SourceFolder::list(folder / "DCIM");
      } catch (...) {
        failure = std::current_exception();
      }
    }}.join();
    fs::permissions(folder / closed, fs::perms::all);
    if (failure) std::rethrow_exception(failure);
    return listing;
  };
  fs::permissions(folder.path(), fs::perms::all);
  const auto listing = listed("DCIM/101APPLE");
  EXPECT_THAT(listing.paths, ElementsAre("100APPLE/a.JPG"));
  EXPECT_THAT(listing.leftOut, ElementsAre(LeftOut{"101APPLE", Reason::unreadableFolder}));
  EXPECT_THROW(listed("DCIM"), FileError);
}

TEST_F(FolderSourceTest, momentFarAway_isThatOfTheFile) {
  struct Row {
    std::int64_t seconds;
    long nanoseconds;
    double expected;
  };
  folder.write("DCIM/a.JPG", "x");
  for (const Row& row :
       {Row{10'413'792'000, 999'999'999, 10'413'792'000.999},
        Row{1'779'267'600, 1'500'000, 1'779'267'600.001}, Row{-1, 750'000'000, -0.25}}) {
    const std::array<timespec, 2> times{{{row.seconds, 0}, {row.seconds, row.nanoseconds}}};
    ASSERT_EQ(::utimensat(AT_FDCWD, (folder / "DCIM/a.JPG").c_str(), times.data(), 0), 0);
    EXPECT_EQ(SourceFolder::list(folder / "DCIM").items.at(0).itemDate, row.expected);
    EXPECT_EQ(openFolder(folder / "DCIM")->status("a.JPG")->modified,
              instantFromUnixSeconds(row.expected));
  }
}

TEST_F(FolderSourceTest, fileThatVanishesWhileOthersAreRead_isSaid) {
  for (const char* const name : {"a.JPG", "b.JPG", "c.JPG"}) {
    folder.write(std::string{"DCIM/100APPLE/"} + name, "x");
  }
  const FolderCatalogue catalogue = read([&](const MetadataPass::Progress& progress) {
    if (progress.read == 1) std::filesystem::remove(folder / "DCIM/100APPLE/b.JPG");
  });
  EXPECT_THAT(idsOf(catalogue), ElementsAre("100APPLE/a.JPG", "100APPLE/c.JPG"));
  EXPECT_THAT(catalogue.leftOut, ElementsAre(LeftOut{"100APPLE/b.JPG", Reason::vanished}));
}

TEST_F(FolderSourceTest, fileThatBecomesALink_isKeptAsUnreadable) {
  folder.write("DCIM/100APPLE/a.JPG", "x");
  folder.write("DCIM/100APPLE/b.JPG", "x");
  const FolderCatalogue catalogue = read([&](const MetadataPass::Progress& progress) {
    if (progress.read != 1) return;
    std::filesystem::remove(folder / "DCIM/100APPLE/b.JPG");
    std::filesystem::create_symlink("/etc/passwd", folder / "DCIM/100APPLE/b.JPG");
  });
  EXPECT_THAT(catalogue.unreadable, ElementsAre("100APPLE/b.JPG"));
  EXPECT_EQ(catalogue.items.size(), 2U);
}

class FolderFiles : public StoredSource {
 public:
  MediaSource& source() override { return *source_; }
  std::string root() const override { return folder_.path(); }

 private:
  std::unique_ptr<MediaSource> open() const {
    std::filesystem::create_directory(folder_ / "DCIM");
    return std::make_unique<FolderMediaSource>(folder_ / "DCIM");
  }

  TemporaryFolder folder_;
  std::unique_ptr<MediaSource> source_ = open();
};

std::unique_ptr<StoredSource> makeFolderFiles() { return std::make_unique<FolderFiles>(); }

INSTANTIATE_TEST_SUITE_P(FolderMediaSource, MediaSourceContract,
                         testing::Values(MediaSourceContract::ParamType{"files", makeFolderFiles}));
INSTANTIATE_TEST_SUITE_P(FolderMediaSource, StoredSourceContract,
                         testing::Values(StoredSourceContract::ParamType{"files",
                                                                         makeFolderFiles}));

struct FolderMediaSourceTest : FolderSourceTest {
  std::optional<SourceError::Kind> failureOf(const MediaAsset& asset,
                                             const OddPaths& oddPaths = {}) {
    FolderMediaSource source{folder / "DCIM", oddPaths};
    received.text.clear();
    try {
      source.download(asset, received);
      return std::nullopt;
    } catch (const SourceError& error) {
      return error.kind();
    }
  }

  ReceivedBytes received;
};

TEST_F(FolderMediaSourceTest, everyFileOfTheCatalogue_arrivesWithItsOwnBytes) {
  // Two names that are not UTF-8, and one that is equal to their displayed form.
  for (const char* const name : {"a.JPG", "b#2.JPG", "\xFF.JPG", "\x80.JPG", "\xEF\xBF\xBD.JPG"}) {
    folder.write(std::string{"DCIM/100APPLE/"} + name, std::string{"bytes of "} + name);
  }
  std::vector<std::string> names{"a.JPG", "b#2.JPG", "\x80.JPG", "\xEF\xBF\xBD.JPG", "\xFF.JPG"};
  for (const bool vanishes : {false, true}) {
    const FolderCatalogue catalogue = read([&](const MetadataPass::Progress& progress) {
      if (vanishes && progress.read == 1) {
        std::filesystem::remove(folder / ("DCIM/100APPLE/" + names[2]));
      }
    });
    if (vanishes) names.erase(names.begin() + 2);
    const auto assets = Snapshot::assetsOf(catalogue.items, TimeZone::utc());
    ASSERT_EQ(assets.size(), names.size());
    for (std::size_t i = 0; i < assets.size(); ++i) {
      EXPECT_EQ(failureOf(assets[i], catalogue.oddPaths), std::nullopt) << assets[i].id();
      EXPECT_EQ(received.text, "bytes of " + names[i]) << assets[i].id();
    }
  }
}

TEST_F(FolderMediaSourceTest, pathThatIsNoRegularFile_isRefused) {
  using Kind = SourceError::Kind;
  folder.write("DCIM/secret", "secret");
  folder.write("DCIM/100APPLE/a.JPG", "abc");
  std::filesystem::create_symlink("../secret", folder / "DCIM/100APPLE/link.JPG");
  std::filesystem::create_directory_symlink("100APPLE", folder / "DCIM/101APPLE");
  ASSERT_EQ(::mkfifo((folder / "DCIM/100APPLE/pipe.JPG").c_str(), 0600), 0);
  for (const auto& [id, kind] : {std::pair{std::string{"none/a.JPG"}, Kind::notFound},
                                 {"100APPLE/a.JPG/b.JPG", Kind::notFound},
                                 {"100APPLE/link.JPG", Kind::unreadable},
                                 {"101APPLE/a.JPG", Kind::unreadable},
                                 {"100APPLE/pipe.JPG", Kind::unreadable},
                                 {"100APPLE/../../DCIM/secret", Kind::unreadable},
                                 {std::string{"100APPLE/a.JPG\0x", 16}, Kind::unreadable}}) {
    EXPECT_EQ(failureOf(assetWithID(id)), kind) << id;
    EXPECT_EQ(received.text, "") << id;
  }
}

}  // namespace
}  // namespace tavrix
