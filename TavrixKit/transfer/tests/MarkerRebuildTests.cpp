#include "transfer/MarkerRebuild.h"

#include <gmock/gmock.h>

#include <map>
#include <mutex>
#include <set>

#include "foundation/Digest.h"
#include "transfer/tests/TestLibrary.h"

namespace tavrix::MarkerRebuild {
namespace {

using DestinationMarker::PhoneRecord;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;

const std::string hash(64, 'a');
const Instant day = *parseIso8601("2026-05-20T12:00:00Z");

/// A source that records which assets were fetched from it.
class ListeningSource : public MemorySource {
 public:
  ListeningSource() {
    threads = 2;
    before = [this](const MediaAsset& asset) {
      const std::lock_guard lock{mutex};
      fetched.insert(std::string{asset.id()});
    };
  }
  std::mutex mutex;
  std::multiset<std::string> fetched;
};

struct MarkerRebuildTest : testing::Test {
  Report run(const std::stop_token& stop = {}) {
    const DestinationListing listing = listDestination(folder);
    const TransferPlan plan = TransferPlanner::plan({groupOf("2026-05-20", assets)}, {});
    return recognise(folder, source, {listing, hash, assets, plan, 2}, {}, stop);
  }
  /// Returns the asset of each recognised file.
  static std::map<std::string, std::string> owners(const Report& report) {
    std::map<std::string, std::string> result;
    for (const ExaminedFile& file : report.files) {
      if (file.asset) result[file.path] = file.asset->id();
    }
    return result;
  }
  void copy(const std::string& path, const std::string& id, std::uint64_t size = 1000) const {
    temporary.write(path, contentOf(id, size));
  }
  void save(char phone, std::vector<DestinationMarker::FileRecord> files) {
    DestinationMarker::save(folder,
                            PhoneRecord{1, std::string(64, phone), "x", "x", day, day, files});
  }

  TemporaryFolder temporary;
  FaultyFolder folder{openFolder(temporary.path())};
  ListeningSource source;
  std::vector<MediaAsset> assets{assetOf("1/A.HEIC"), assetOf("1/B.HEIC"), assetOf("1/C.MOV", 2000),
                                 assetOf("1/D.HEIC", 3000)};
};

TEST_F(MarkerRebuildTest, copies_areRecognisedUnderAnyNameAndLittleIsRead) {
  copy("2026-05-20/A.HEIC", "1/A.HEIC");
  copy("Дача/iPhone B (2).HEIC", "1/B.HEIC");
  temporary.write("mine.txt", "notes");
  temporary.write("2026-05-20/C.MOV", std::string(2000, 'x'));
  temporary.write("2026-05-20/A.HEIC.part", contentOf("1/A.HEIC", 1000));
  temporary.write("SHA256SUMS", std::string(3000, 'x'));
  const Report report = run();
  EXPECT_THAT(owners(report), ElementsAre(Pair("2026-05-20/A.HEIC", "1/A.HEIC"),
                                          Pair("Дача/iPhone B (2).HEIC", "1/B.HEIC")));
  EXPECT_EQ(report.files.size(), 4U);
  EXPECT_EQ(report.count(State::unmatched), 2U);
  EXPECT_EQ(report.bytesRead, 4 * 1000U + 2 * 2000U);
  EXPECT_THAT(source.fetched, ElementsAre("1/A.HEIC", "1/B.HEIC", "1/C.MOV"));
  EXPECT_THAT(records(report, {}, true),
              ElementsAre(DestinationMarker::FileRecord{"2026-05-20/A.HEIC", 1000,
                                                        sha256Hex(contentOf("1/A.HEIC", 1000)),
                                                        "1/A.HEIC", std::nullopt},
                          testing::Field(&DestinationMarker::FileRecord::localID, "1/B.HEIC")));
}

TEST_F(MarkerRebuildTest, anotherCardsShotOfEqualNamesAndSizes_isNewAfterwards) {
  const auto shot = [](std::chrono::seconds later) {
    const Instant date = day + later;
    return std::vector{MediaAsset{"1/IMG_1.HEIC", "IMG_1.HEIC", "1", MediaKind::photo, 1000, date,
                                  std::nullopt, false, std::nullopt, std::nullopt, date},
                       MediaAsset{"1/IMG_1.AAE", "IMG_1.AAE", "1", MediaKind::sidecar, 50, day,
                                  std::nullopt, false, std::nullopt, std::nullopt}};
  };
  assets = shot(std::chrono::seconds{0});
  copy("2026-05-20/IMG_1.HEIC", "1/IMG_1.HEIC");
  copy("2026-05-20/IMG_1.AAE", "1/IMG_1.AAE", 50);
  DestinationMarker::save(folder,
                          PhoneRecord{1, hash, "x", "x", day, day,
                                      records(run(), BundleBuilder::makeBundles(assets), false)});
  const auto newFiles = [&](std::chrono::seconds later) {
    return pathsOf(TransferPlanner::plan({groupOf("2026-05-20", shot(later))}, {},
                                         readDestination(folder, hash).view));
  };
  EXPECT_THAT(newFiles(std::chrono::seconds{0}), IsEmpty());
  EXPECT_THAT(newFiles(std::chrono::seconds{3}),
              ElementsAre("2026-05-20/IMG_1 (2).HEIC", "2026-05-20/IMG_1 (2).AAE"));
}

TEST_F(MarkerRebuildTest, equalBytes_goByPlaceThenByName) {
  assets = {assetOf("1/A.HEIC"), assetOf("1/B.HEIC"), assetOf("2/A.HEIC"), assetOf("3/Z.HEIC")};
  for (const MediaAsset& asset : assets)
    source.bytes[std::string{asset.id()}] = "same" + std::string(996, 's');
  const auto place = [&](const std::string& path) {
    temporary.write(path, "same" + std::string(996, 's'));
  };
  // The plan puts 2/A.HEIC at "2026-05-20/A (2).HEIC".
  place("2026-05-20/A (2).HEIC");
  place("2026-05-20/A.HEIC");
  place("other/VK_B.HEIC");
  place("other/copy.HEIC");
  place("other/more.HEIC");
  place("other/B.HEIC.bak");
  const auto found = owners(run());
  EXPECT_EQ(found.at("2026-05-20/A.HEIC"), "1/A.HEIC");
  EXPECT_EQ(found.at("2026-05-20/A (2).HEIC"), "2/A.HEIC");
  EXPECT_EQ(found.at("other/VK_B.HEIC"), "1/B.HEIC");
  std::set<std::string> all;
  for (const auto& [path, id] : found) all.insert(id);
  EXPECT_EQ(found.size(), 6U);
  EXPECT_EQ(all.size(), 4U);  // no asset is left out while another one has two copies
}

TEST_F(MarkerRebuildTest, longNamesOfEqualBytes_goByWhatTheNumberLeftOfThem) {
  const std::string stem(251, 'x');
  const std::string content = contentOf("same", 1000);
  assets = {assetOf("1/NOEXT"), assetOf("1/" + stem + ".JPG"), assetOf("2/" + stem + ".JPG"),
            assetOf("3/LAST.HEIC")};
  const TransferPlan plan =
      TransferPlanner::plan({groupOf("2026-05-20", {assets.begin() + 1, assets.end()})}, {});
  for (const MediaAsset& asset : assets) source.bytes[std::string{asset.id()}] = content;
  for (const std::string& name : {stem + ".JPG", stem.substr(4) + " (2).JPG", std::string{"z"}}) {
    temporary.write("other/" + name, content);
  }
  const auto found =
      owners(recognise(folder, source, {listDestination(folder), hash, assets, plan, 1}));
  EXPECT_THAT(found, ElementsAre(Pair("other/" + stem.substr(4) + " (2).JPG", assets[2].id()),
                                 Pair("other/" + stem + ".JPG", assets[1].id()),
                                 Pair("other/z", "3/LAST.HEIC")));
}

TEST_F(MarkerRebuildTest, twinWhoseCopyIsRecorded_leavesTheMovedCopyToTheOther) {
  assets = {assetOf("1/A.HEIC"), assetOf("1/B.HEIC"), assetOf("1/C.HEIC")};
  const std::string same = contentOf("same", 1000);
  std::vector<DestinationMarker::FileRecord> entries;
  for (const MediaAsset& asset : assets) {
    const std::string path = "2026-05-20/" + std::string{asset.name()};
    source.bytes[std::string{asset.id()}] = same;
    temporary.write(path, same);
    entries.push_back({path, 1000, sha256Hex(same), std::string{asset.id()}, {}});
  }
  save('a', entries);
  std::filesystem::create_directory(temporary / "moved");
  std::filesystem::rename(temporary / "2026-05-20/C.HEIC", temporary / "moved/A.HEIC");
  EXPECT_THAT(owners(run()), ElementsAre(Pair("moved/A.HEIC", "1/C.HEIC")));
  // Once every asset has a copy, the name decides again.
  temporary.write("2026-05-20/C.HEIC", same);
  EXPECT_THAT(owners(run()), ElementsAre(Pair("moved/A.HEIC", "1/A.HEIC")));
}

TEST_F(MarkerRebuildTest, recordNamedFileOfARecordsName_isLookedAt) {
  copy("phone-bbbbbbbb.json", "1/A.HEIC");
  save('a', {{"phone-bbbbbbbb.json", 0, std::nullopt, "1/A.HEIC", {}}});
  EXPECT_THAT(owners(run()), ElementsAre(Pair("phone-bbbbbbbb.json", "1/A.HEIC")));
}

TEST_F(MarkerRebuildTest, closedFolder_isNamedAndAFailure) {
  copy("closed/A.HEIC", "1/A.HEIC");
  folder.faults().rule = failing(FileOperation::list, "closed", EACCES);
  const Report report = run();
  EXPECT_THAT(report.files, IsEmpty());
  EXPECT_THAT(report.unreadableFolders, ElementsAre(UnreadableFolder{"closed", EACCES}));
  EXPECT_TRUE(report.hasFailures());
}

TEST_F(MarkerRebuildTest, manyTwins_areToldApartByTheirNames) {
  assets.clear();
  for (int i = 0; i < 20'000; ++i) {
    assets.push_back(assetOf("1/IMG_" + std::to_string(i) + ".AAE", 0));
  }
  for (int i = 0; i < 3000; ++i) temporary.write("x/VK_IMG_" + std::to_string(i) + ".AAE", "");
  const auto found = owners(run());
  EXPECT_EQ(found.size(), 3000U);
  EXPECT_EQ(found.at("x/VK_IMG_2999.AAE"), "1/IMG_2999.AAE");
}

TEST_F(MarkerRebuildTest, whatRecordsKnow_isNotReadAgain) {
  copy("A.HEIC", "1/A.HEIC");
  copy("B.HEIC", "1/B.HEIC");
  copy("C.MOV", "1/C.MOV", 2000);
  copy("D.HEIC", "1/D.HEIC", 3000);
  const auto entry = [](const std::string& path, const std::string& id, std::uint64_t size) {
    return DestinationMarker::FileRecord{path, size, sha256Hex(contentOf(id, size)), id, {}};
  };
  auto killed = entry("C.MOV", "1/C.MOV", 2000);
  killed.sha256 = std::nullopt;
  save('a', {entry("A.HEIC", "1/A.HEIC", 1000), killed});
  save('b', {entry("B.HEIC", "7/B.HEIC", 1000), entry("D.HEIC", "7/D.HEIC", 5)});
  const Report report = run();
  std::map<std::string, std::string> states;
  for (const ExaminedFile& file : report.files) states[file.path] = textOf(file.state);
  EXPECT_THAT(states, ElementsAre(Pair("A.HEIC", "alreadyRecorded"), Pair("B.HEIC", "otherPhone"),
                                  Pair("C.MOV", "recognised"), Pair("D.HEIC", "recognised")));
  EXPECT_THAT(source.fetched, ElementsAre("1/C.MOV", "1/D.HEIC"));
}

TEST_F(MarkerRebuildTest, failures_areOfTheirFilesAlone) {
  copy("A.HEIC", "1/A.HEIC");
  copy("B.HEIC", "1/B.HEIC");
  copy("C.MOV", "1/C.MOV", 2000);
  copy("D.HEIC", "1/D.HEIC", 3000);
  source.bytes["1/C.MOV"] = contentOf("1/C.MOV", 2001);
  source.failing["1/D.HEIC"] = SourceError::Kind::notFound;
  folder.faults().rule = failing(FileOperation::read, "B.HEIC", EIO);
  const Report report = run();
  EXPECT_THAT(owners(report), ElementsAre(Pair("A.HEIC", "1/A.HEIC")));
  EXPECT_EQ(report.count(State::unreadable), 1U);
  EXPECT_EQ(report.count(State::unmatched), 2U);
  EXPECT_THAT(report.unreadableAssets, ElementsAre(assets[2], assets[3]));
  EXPECT_TRUE(report.hasFailures());
}

TEST_F(MarkerRebuildTest, stop_keepsOnlyWhatIsComparedWhole) {
  assets.clear();
  for (std::uint64_t i = 0; i < 40; ++i) {
    const std::string id = "1/" + std::to_string(100 + i) + ".HEIC";
    assets.push_back(assetOf(id, 500 + i / 2));
    copy(std::to_string(100 + i) + ".HEIC", id, 500 + i / 2);
  }
  std::stop_source stop;
  source.before = [&](const MediaAsset& asset) {
    if (asset.id() == "1/120.HEIC") stop.request_stop();
  };
  const Report report = run(stop.get_token());
  EXPECT_TRUE(report.isStopped);
  EXPECT_GE(report.count(State::recognised), 16U);
  EXPECT_GE(report.count(State::notReached), 18U);
  EXPECT_EQ(report.count(State::recognised) + report.count(State::notReached), 40U);
  EXPECT_EQ(records(report, {}, false).size(), report.count(State::recognised));
}

TEST_F(MarkerRebuildTest, nothingOfOneSize_readsNothing) {
  temporary.write("a", "1");
  const Report report = run();
  EXPECT_EQ(report.bytesRead, 0U);
  EXPECT_THAT(source.fetched, IsEmpty());
  EXPECT_FALSE(report.hasFailures());
}

}  // namespace
}  // namespace tavrix::MarkerRebuild
