#include "device/thumbnails/ThumbnailStore.h"

#include <gmock/gmock.h>

#include "device/thumbnails/DesktopThumbnails.h"
#include "device/thumbnails/tests/support/DesktopPng.h"
#include "device/thumbnails/tests/support/ThumbnailBench.h"
#include "foundation/Digest.h"

namespace tavrix {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using Priority = ThumbnailPriority;

struct ThumbnailStoreTest : ThumbnailBench {};

TEST_F(ThumbnailStoreTest, pictures_comeByPriorityLatestFirstAndBetterOnesInIdleTime) {
  decoding.close();
  const auto poor = request("poor");
  awaitWaiting(decoding, 1);
  std::vector<ThumbnailRequest> requests;
  settle([&] {
    for (const char* const id : {"a", "e"}) requests.push_back(request(id, Priority::idle));
    requests.push_back(request("b", Priority::near));
    for (const char* const id : {"c", "d"}) requests.push_back(request(id));
    requests[1].setPriority(Priority::onScreen);
  });
  decoding.open();
  EXPECT_THAT(awaitAnswers(7),
              ElementsAre("poor 100…", "e 204", "d 203", "c 202", "b 201", "poor 300", "a 200"));
}

TEST_F(ThumbnailStoreTest, picture_isMadeOnceForAllWhoWantItAndKept) {
  decoding.close();
  std::vector<ThumbnailRequest> requests;
  requests.push_back(request("poor"));
  requests.push_back(request("poor", Priority::idle));
  awaitWaiting(decoding, 1);
  decoding.allow(1);
  EXPECT_THAT(awaitAnswers(2), Each("poor 100…"));
  awaitWaiting(decoding, 1);
  requests.push_back(request("poor"));
  EXPECT_THAT(awaitAnswers(1), ElementsAre("poor 100…"));
  decoding.open();
  EXPECT_THAT(awaitAnswers(3), Each("poor 300"));
  EXPECT_THAT(takeLog(), ElementsAre("open poor", "decode 100", "open poor", "decode 300"));
  EXPECT_GE(prepared.exchange(0), 1);
  openStore(1);
  const auto again = request("poor");
  EXPECT_THAT(awaitAnswers(1), ElementsAre("poor 300"));
  EXPECT_THAT(takeLog(), IsEmpty());
  EXPECT_EQ(prepared, 0) << "for a picture in the cache";
}

TEST_F(ThumbnailStoreTest, quickPicture_isMadeBetterByTheNextStart) {
  decoding.allow(1);
  auto poor = request("poor");
  EXPECT_THAT(awaitAnswers(1), ElementsAre("poor 100…"));
  awaitWaiting(decoding, 1);
  openStore(1);  // ends the decoder in the middle of the file
  decoding.close();
  const auto a = request("a");
  awaitWaiting(decoding, 1);
  openStore(1);  // and in the middle of a small picture
  decoding.open();
  poor = request("poor");
  EXPECT_THAT(awaitAnswers(2), ElementsAre("poor 100…", "poor 300"));
}

TEST_F(ThumbnailStoreTest, twoWorkers_workAtTheSameTime) {
  openStore(2);
  decoding.close();
  const auto a = request("a");
  const auto b = request("b");
  awaitWaiting(decoding, 2);
  decoding.open();
  awaitAnswers(2);
}

TEST_F(ThumbnailStoreTest, withdrawnRequest_isNotWorked) {
  reading.close();
  auto a = request("a");
  awaitWaiting(reading, 1);
  ThumbnailRequest b;
  ThumbnailRequest c;
  settle([&] {
    b = request("b");
    c = request("c");
  });
  a.withdraw();  // in the middle of its file
  b = {};
  reading.open();
  EXPECT_THAT(awaitAnswers(1), ElementsAre("c 202"));
  EXPECT_THAT(takeLog(), ElementsAre("open a", "open c", "decode 202"));
}

TEST_F(ThumbnailStoreTest, receiver_mayWithdrawTheOthersAndEndTheStore) {
  int calls = 0;
  std::vector<ThumbnailRequest> requests;
  for (int i = 0; i < 2; ++i) {
    requests.push_back(store->request(asset("a"), thumbnailSide, Priority::near, [&](const auto&) {
      ++calls;
      requests.clear();
      store.reset();
    }));
  }
  ASSERT_TRUE(loop.runUntil([&] { return calls > 0; }));
  loop.runDue();
  EXPECT_EQ(calls, 1);
}

TEST_F(ThumbnailStoreTest, failure_isKeptOnlyIfItIsThePicturesOwn) {
  struct Row {
    std::string file;
    MediaKind kind;
    std::string answer;
    bool isKept;
  };
  const std::vector<Row> rows{{"broken 300", MediaKind::photo, "x 300", true},
                              {"0 300", MediaKind::photo, "x 300", true},
                              {"broken broken", MediaKind::photo, "x not showable", true},
                              {"broken 0", MediaKind::video, "x not showable", true},
                              {"0 0", MediaKind::photo, "x not showable", true},
                              {"", MediaKind::sidecar, "x not showable", true},
                              {"busy 300", MediaKind::photo, "x not now…", false},
                              {"", MediaKind::photo, "x not now…", false}};
  for (const auto& [file, kind, answer, isKept] : rows) {
    SCOPED_TRACE(file + " " + answer);
    ThumbnailCache::reset(cacheSetup().folder);
    openStore(1);
    files.erase("x");
    if (!file.empty()) files["x"] = file;
    const auto first = request("x", Priority::onScreen, kind);
    EXPECT_THAT(awaitAnswers(1), ElementsAre(answer));
    files["x"] = "200 1";
    // The source is set again: on the next start, or when the phone is back.
    isKept ? openStore(1) : plugIn();
    const auto second = request("x", Priority::onScreen, kind);
    EXPECT_THAT(awaitAnswers(isKept ? 1 : 2), Each(isKept ? answer : "x 200"));
  }
}

TEST_F(ThumbnailStoreTest, unpluggedPhone_leavesItsRequestsWaiting) {
  const auto a = request("a");
  awaitAnswers(1);
  unplug();
  const auto again = request("a");
  EXPECT_THAT(awaitAnswers(1), ElementsAre("a 200")) << "from the cache";
  ThumbnailRequest b;
  settle([&] { b = request("b"); });
  EXPECT_THAT(answers, IsEmpty());
  plugIn();
  EXPECT_THAT(awaitAnswers(1), ElementsAre("b 201"));

  reading.close();
  const auto c = request("c");
  awaitWaiting(reading, 1);
  unplug();
  reading.open();
  plugIn();
  EXPECT_THAT(awaitAnswers(1), ElementsAre("c 202"));
}

TEST_F(ThumbnailStoreTest, anotherSource_forgetsTheRequestsOfTheFormer) {
  auto former = request("a");
  plugIn("Q");
  former.setPriority(Priority::near);
  const auto latter = request("b", Priority::idle);
  EXPECT_THAT(awaitAnswers(1), ElementsAre("b 201"));
  EXPECT_THAT(takeLog(), ElementsAre("open b", "decode 201"));
}

TEST_F(ThumbnailStoreTest, transfer_hasTheSourceForItself) {
  const auto kept = request("e");
  awaitAnswers(1);
  reading.close();
  const auto a = request("a");
  awaitWaiting(reading, 1);
  takeLog();
  store->beginTransfer([this](const MediaAsset& asset) -> std::optional<std::string> {
    const std::string name = "landed/" + std::string{asset.id()};
    return folder.has(name) ? std::optional{folder / name} : std::nullopt;
  });
  reading.open();
  std::vector<ThumbnailRequest> requests;
  settle([&] {
    for (const char* const id : {"b", "c", "e"}) requests.push_back(request(id));
  });
  EXPECT_THAT(answers, ElementsAre("e 204"));
  EXPECT_THAT(takeLog(), IsEmpty());
  answers.clear();

  folder.write("landed/b", "301 40000");
  store->landedFilesChanged();
  EXPECT_THAT(awaitAnswers(1), ElementsAre("b 301"));
  EXPECT_THAT(takeLog(), ElementsAre("decode 301"));
  store->endTransfer();
  EXPECT_THAT(awaitAnswers(2), testing::UnorderedElementsAre("a 200", "c 202"));
}

/// Writes a file and the thumbnail that another program made of it.
void writeWithThumbnail(const TemporaryFolder& folder, const std::string& name) {
  folder.write(name, "picture");
  const auto status = openFolder(folder.path())->status(name).value();
  const auto seconds = std::chrono::floor<std::chrono::seconds>(status.modified);
  const std::string uri = DesktopThumbnails::uriOf(folder / name);
  folder.write("desktop/large/" + md5Hex(uri) + ".png",
               testbytes::desktopPng(
                   256, {"Thumb::URI=" + uri,
                         "Thumb::MTime=" + std::to_string(seconds.time_since_epoch().count())}));
}

TEST_F(ThumbnailStoreTest, film_comesWithItsLength) {
  files = {{"quick", "200 0 7"}, {"sharp", "100 300 8"}, {"other", "200 0 9"}};
  writeWithThumbnail(folder, "other");
  const auto requestAll = [this] {
    std::vector<ThumbnailRequest> requests;
    for (const char* const id : {"quick", "sharp", "other"}) {
      requests.push_back(request(id, ThumbnailPriority::onScreen, MediaKind::video));
    }
    return requests;
  };
  const auto first = requestAll();
  EXPECT_THAT(awaitAnswers(4),
              testing::UnorderedElementsAre("quick 200 7000ms", "sharp 100 8000ms…",
                                            "sharp 300 8000ms", "other 256 9000ms"));
  openStore(1);
  takeLog();
  const auto again = requestAll();
  EXPECT_THAT(awaitAnswers(3), testing::UnorderedElementsAre("quick 200 7000ms", "sharp 300 8000ms",
                                                             "other 256 9000ms"));
  EXPECT_THAT(takeLog(), IsEmpty()) << "from the cache";
}

TEST_F(ThumbnailStoreTest, thumbnailOfAnotherProgram_sparesTheFile) {
  writeWithThumbnail(folder, "a");
  const auto a = request("a");
  const auto b = request("b");
  EXPECT_THAT(awaitAnswers(2), testing::UnorderedElementsAre("a 256", "b 201"));
  EXPECT_THAT(takeLog(), testing::UnorderedElementsAre("decode 256", "open b", "decode 201"));
}

}  // namespace
}  // namespace tavrix
