#include "device/thumbnails/ThumbnailCache.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <thread>

#include "foundation/Digest.h"
#include "foundation/tests/support/TemporaryFolder.h"

namespace tavrix {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

ThumbnailKey keyOf(const std::string& path, std::uint64_t bytes = 812044) {
  return {.source = "00008030-00A4",
          .path = path,
          .bytes = bytes,
          .date = Instant{std::chrono::seconds{1779267600}}};
}

KeptThumbnail thumbnail(const std::string& jpeg,
                        KeptThumbnail::Quality quality = KeptThumbnail::Quality::sharp) {
  return {{320, 240, jpeg}, quality};
}

/// Returns the bytes of the picture of an entry; nullopt without an entry or a picture.
std::optional<std::string> jpegOf(const std::optional<ThumbnailEntry>& entry) {
  const auto* const kept = entry ? std::get_if<KeptThumbnail>(&*entry) : nullptr;
  return kept == nullptr ? std::nullopt : std::optional{kept->image.jpeg};
}

struct ThumbnailCacheTest : testing::Test {
  std::unique_ptr<ThumbnailCache> open(std::uint64_t maxBytes = 200'000'000,
                                       const std::string& version = "1.4.0") const {
    return std::make_unique<ThumbnailCache>(ThumbnailCache::Setup{.folder = directory,
                                                                  .programVersion = version,
                                                                  .now = [this] { return now; },
                                                                  .maxBytes = maxBytes});
  }
  std::string pathOf(const ThumbnailKey& key) const {
    const std::string digest = sha256Hex(key.text());
    return "thumbnails/" + digest.substr(0, 2) + "/" + digest.substr(2);
  }
  void age(const ThumbnailKey& key, std::chrono::hours hours) const {
    fs::last_write_time(folder / pathOf(key), fs::file_time_type::clock::now() - hours);
  }

  TemporaryFolder folder;
  std::string directory = folder / "thumbnails";
  Instant now = std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
};

TEST_F(ThumbnailCacheTest, entry_isFoundByAllOfItsKeyAlone) {
  const ThumbnailKey key = keyOf("100APPLE/IMG_0100.HEIC");
  EXPECT_EQ(open()->find(key), std::nullopt);
  EXPECT_FALSE(folder.has("thumbnails")) << "a search makes no folder";
  open()->keep(key, thumbnail("old", KeptThumbnail::Quality::quick));
  open()->keep(key, thumbnail("JPEG\n\0\xFF"));
  const auto entry = open()->find(key);
  ASSERT_EQ(jpegOf(entry), "JPEG\n\0\xFF");
  EXPECT_EQ(std::get<KeptThumbnail>(*entry).image.width, 320U);
  EXPECT_EQ(std::get<KeptThumbnail>(*entry).image.height, 240U);
  EXPECT_EQ(std::get<KeptThumbnail>(*entry).quality, KeptThumbnail::Quality::sharp);
  std::vector<ThumbnailKey> others(5, key);
  others[0].source = "00008030-00A5";
  others[1].path = "101APPLE/IMG_0100.HEIC";
  others[2].bytes = 812045;
  others[3].date.reset();
  others[4].longestSide = previewSide;
  for (const ThumbnailKey& other : others) EXPECT_EQ(open()->find(other), std::nullopt);
  // Other users must not look at the pictures.
  EXPECT_EQ(fs::status(directory).permissions(), fs::perms::owner_all);
}

TEST_F(ThumbnailCacheTest, notShowable_isTriedAgainByAnotherVersion) {
  const ThumbnailKey key = keyOf("100APPLE/IMG_0101.MOV");
  open()->keep(key, NotShowable{});
  EXPECT_EQ(open()->find(key).value().index(), ThumbnailEntry{NotShowable{}}.index());
  EXPECT_EQ(open(1000, "1.5.0")->find(key), std::nullopt);
}

TEST_F(ThumbnailCacheTest, damagedEntry_isAbsentAndReplaced) {
  const ThumbnailKey key = keyOf("a.jpg");
  open()->keep(key, thumbnail("picture"));
  const std::string path = pathOf(key);
  const std::string good = folder.read(path);
  for (std::size_t i = 0; i < good.size(); ++i) {
    folder.write(path, good.substr(0, i));
    EXPECT_EQ(open()->find(key), std::nullopt) << i;
    std::string flipped = good;
    flipped[i] = static_cast<char>(flipped[i] ^ 1);
    folder.write(path, flipped);
    EXPECT_EQ(open()->find(key), std::nullopt) << i;
  }
  // Whole, but of another file.
  open()->keep(keyOf("b.jpg"), thumbnail("picture"));
  folder.write(path, folder.read(pathOf(keyOf("b.jpg"))));
  EXPECT_EQ(open()->find(key), std::nullopt);
  folder.write(path, good + std::string(ThumbnailFile::maxBytes, 'x'));
  EXPECT_EQ(open()->find(key), std::nullopt);
  open()->keep(key, thumbnail("again"));
  EXPECT_EQ(jpegOf(open()->find(key)), "again");
}

TEST_F(ThumbnailCacheTest, cacheAboveItsLimit_losesWhatWasNotUsedLongest) {
  std::vector<ThumbnailKey> keys;
  for (int i = 0; i < 20; ++i) {
    keys.push_back(keyOf(fmt::format("IMG_{:02}.JPG", i)));
    open()->keep(keys.back(), thumbnail(std::string(1000, 'j')));
    age(keys.back(), std::chrono::hours{24 * (40 - i)});
  }
  const std::uint64_t bytes = ThumbnailCache::contents(directory).bytes;
  EXPECT_EQ(ThumbnailCache::contents(directory).files, 20U);
  folder.write("thumbnails/notes.txt", "foreign");
  const std::string temporary = pathOf(keys[0]) + ".0123456789ab.part";
  folder.write(temporary, "left over");
  fs::last_write_time(folder / temporary, fs::file_time_type::clock::now() - 2h);
  folder.write(pathOf(keys[1]) + ".0123456789ab.part", "being written");
  // A use moves an entry to the end; a second one on the same day writes nothing.
  EXPECT_NE(open()->find(keys[0]), std::nullopt);
  age(keys[1], 23h);
  const auto used = fs::last_write_time(folder / pathOf(keys[1]));
  EXPECT_NE(open()->find(keys[1]), std::nullopt);
  EXPECT_EQ(fs::last_write_time(folder / pathOf(keys[1])), used);

  open(bytes)->trim();
  EXPECT_EQ(ThumbnailCache::contents(directory).files, 20U) << "the limit is not exceeded";
  open(bytes - 1)->trim();
  EXPECT_EQ(ThumbnailCache::contents(directory).files, 18U) << "90 %";
  for (std::size_t i = 0; i < keys.size(); ++i) {
    EXPECT_EQ(open()->find(keys[i]).has_value(), i < 2 || i >= 4) << i;
  }
  EXPECT_FALSE(folder.has(temporary));
  EXPECT_TRUE(folder.has(pathOf(keys[1]) + ".0123456789ab.part"));

  EXPECT_EQ(ThumbnailCache::reset(directory), (ThumbnailCache::Removal{18, 0}));
  EXPECT_EQ(ThumbnailCache::contents(directory), ThumbnailCache::Contents{});
  EXPECT_THAT(openFolder(directory)->names(), testing::ElementsAre("notes.txt"));
}

TEST_F(ThumbnailCacheTest, severalAtOnce_neverSeeHalfAnEntry) {
  const auto work = [&](unsigned seed) {
    const auto cache = open(20'000);
    for (unsigned i = 0; i < 400; ++i) {
      const std::string name = std::to_string((i * 7 + seed) % 12);
      const std::string jpeg = name + std::string(3000, static_cast<char>('a' + i % 20));
      cache->keep(keyOf(name), thumbnail(jpeg));
      cache->trim();
      const auto found = jpegOf(cache->find(keyOf(name)));
      if (found) {
        EXPECT_EQ(*found, name + std::string(3000, found->back()));
      }
      if (seed == 3 && i % 50 == 0) ThumbnailCache::reset(directory);
      std::error_code ignored;
      if (seed == 2 && i % 150 == 0) fs::remove_all(directory, ignored);
    }
  };
  {
    std::vector<std::jthread> threads;
    for (const unsigned seed : {1U, 2U, 3U}) threads.emplace_back(work, seed);
  }
  open()->keep(keyOf("last"), thumbnail("last"));
  EXPECT_EQ(jpegOf(open()->find(keyOf("last"))), "last");
  open(20'000)->trim();
  EXPECT_LE(ThumbnailCache::contents(directory).bytes, 20'000U);
}

TEST_F(ThumbnailCacheTest, examplesOfTheDescription_areReadAndWrittenBack) {
  std::ifstream page{std::string{TAVRIX_DOCS} + "/thumbnails.md"};
  const std::string text{std::istreambuf_iterator<char>{page}, {}};
  std::size_t at = text.find("## The file of an entry");
  for (const std::string name : {"100APPLE/IMG_0100.HEIC", "100APPLE/IMG_0101.MOV"}) {
    at = text.find("```\n", at) + 4;
    const std::string example = text.substr(at, text.find("```", at) - at);
    at += example.size() + 4;
    const std::string key = keyOf(name).text();
    const auto entry = ThumbnailFile::decode(example, key, "1.4.0");
    ASSERT_TRUE(entry) << example
                       << ThumbnailFile::encode(key, thumbnail("(the JPEG file)\n"), "1.4.0")
                       << ThumbnailFile::encode(key, NotShowable{}, "1.4.0");
    EXPECT_EQ(ThumbnailFile::encode(key, *entry, "1.4.0"), example);
  }
}

TEST(ThumbnailKey, date_isTheCamerasIfThereIsOne) {
  const auto keyOf = [](std::optional<Instant> camera) {
    const MediaAsset asset{
        "100APPLE/A.JPG", "A.JPG", "100APPLE",   MediaKind::photo, 12,    Instant{3000ms},
        std::nullopt,     false,   std::nullopt, std::nullopt,     camera};
    return ThumbnailKey::of(asset, "P", 320).text();
  };
  EXPECT_EQ(keyOf(Instant{1000ms}), "P|100APPLE/A.JPG|12|1.0|320");
  EXPECT_EQ(keyOf(std::nullopt), "P|100APPLE/A.JPG|12|3.0|320");
}

TEST(ThumbnailCache, userFolder_followsTheBaseDirectoryRules) {
  using Choice = std::optional<std::string>;
  EXPECT_EQ(ThumbnailCache::userFolder("/c", "/h"), "/c/Tavrix/thumbnails");
  EXPECT_EQ(ThumbnailCache::userFolder("c", "/h"), "/h/.cache/Tavrix/thumbnails");
  EXPECT_EQ(ThumbnailCache::userFolder({}, "h"), Choice{});
}

}  // namespace
}  // namespace tavrix
