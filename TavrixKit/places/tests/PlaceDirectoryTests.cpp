#include <gmock/gmock.h>

#include <atomic>
#include <cmath>
#include <latch>

#include "foundation/Sanitizers.h"
#include "places/NamedCells.h"

namespace tavrix {
namespace {

/// Names every point after its latitude, but has no answer for the southern half. Counts its calls.
class CountingGeocoder : public Geocoder {
 public:
  explicit CountingGeocoder(std::atomic<int>& asked, std::latch* gate = nullptr)
      : asked_(asked), gate_(gate) {}
  std::string source() const override { return "counting"; }
  std::optional<GeocodedPlace> resolve(const GeoPoint& point,
                                       const std::string& localeID) const override {
    ++asked_;
    if (gate_ != nullptr) gate_->wait();
    if (point.latitude < 0) return std::nullopt;
    const std::string city = fmt(point) + (localeID.starts_with("ru") ? " по-русски" : "");
    return GeocodedPlace{city, "Main", "Land", "AA", {}, 5, 6};
  }
  std::optional<GeocodedDistrict> districtAt(const GeoPoint& point,
                                             const std::string& /*localeID*/) const override {
    ++asked_;
    return GeocodedDistrict{"Quarter", 9, static_cast<std::uint32_t>(std::lround(point.latitude))};
  }

 private:
  static std::string fmt(const GeoPoint& point) {
    return "City " + std::to_string(static_cast<int>(point.latitude));
  }
  std::atomic<int>& asked_;
  std::latch* gate_;
};

struct Directory {
  std::atomic<int> asked = 0;
  std::atomic<int> told = 0;
  PlaceDirectory directory;

  explicit Directory(GeocodingCache cache = {}, std::latch* gate = nullptr)
      : directory(std::make_unique<CountingGeocoder>(asked, gate), std::move(cache),
                  [this] { ++told; }) {}
};

TEST(PlaceDirectory, newCells_areResolvedInTheBackgroundOnce) {
  std::latch gate{1};
  Directory world{{}, &gate};
  world.directory.request({"1.0000,0.0000", "1.0000,0.0000", "2.0000,0.0000"}, "en_US");
  world.directory.request({"2.0000,0.0000"}, "en_GB");
  EXPECT_EQ(world.directory.find("1.0000,0.0000", "en_US"), std::nullopt) << "not yet";
  gate.count_down();
  world.directory.wait();
  EXPECT_EQ(world.directory.find("1.0000,0.0000", "en_US")->city, "City 1");
  EXPECT_EQ(world.directory.find("1.0000,0.0000", "ru_RU"), std::nullopt) << "another language";
  EXPECT_EQ(world.asked, 2);
  world.directory.request({"1.0000,0.0000"}, "ru_RU");
  world.directory.wait();
  EXPECT_EQ(world.directory.find("1.0000,0.0000", "ru")->city, "City 1 по-русски");
  EXPECT_EQ(world.asked, 3);
}

TEST(PlaceDirectory, cellsThatCannotBeTold_areAskedForAgain) {
  Directory world;
  for (int i = 1; i <= 2; ++i) {
    world.directory.request({"-1.0000,0.0000", "no key"}, "en");
    world.directory.wait();
    EXPECT_EQ(world.directory.find("-1.0000,0.0000", "en"), std::nullopt);
    EXPECT_EQ(world.asked, i);
  }
  EXPECT_FALSE(world.directory.hasLearnt());
}

TEST(PlaceDirectory, cache_sparesTheGeocoderWhileTheSourceIsTheSame) {
  const GeocodedPlace kept{"Kept", {}, {}, {}};
  const GeocodingCache cache{"counting", {{"en", {{"1.0000,0.0000", kept}}}}};
  Directory world{cache};
  world.directory.request({"1.0000,0.0000"}, "en_US");
  world.directory.wait();
  EXPECT_EQ(world.directory.find("1.0000,0.0000", "en_US"), kept);
  EXPECT_EQ(world.asked, 0);
  EXPECT_FALSE(world.directory.hasLearnt());
  world.directory.request({"2.0000,0.0000"}, "en_US");
  world.directory.wait();
  EXPECT_TRUE(world.directory.hasLearnt());
  EXPECT_EQ(world.directory.cache().languages.at("en").size(), 2U);

  Directory other{{"another source", cache.languages}};
  EXPECT_EQ(other.directory.cache(), (GeocodingCache{"counting", {}}));
}

TEST(PlaceDirectory, moreCellsThanAreKept_areAllKnownInTheRun) {
  if (hasThreadSanitizer) {
    GTEST_SKIP() << "So many cells take minutes here, and few of them take the same locks.";
  }
  std::vector<std::string> keys;
  for (std::size_t i = 0; i <= GeocodingCache::largestCellCount; ++i) {
    keys.push_back(PlaceCells::keyAt({static_cast<double>(i) * 0.0005, 0}));
  }
  Directory world;
  world.directory.request(keys, "en");
  world.directory.wait();
  for (const std::string& key : keys) ASSERT_TRUE(world.directory.find(key, "en")) << key;
  const auto kept = GeocodingCacheFile::decode(GeocodingCacheFile::encode(world.directory.cache()));
  ASSERT_EQ(kept->languages.at("en").size(), GeocodingCache::largestCellCount);
  EXPECT_EQ((Directory{*kept}.directory.find(keys.front(), "en")), std::nullopt) << "begun anew";
}

TEST(PlaceDirectory, listener_hearsOfNews) {
  std::atomic<int> asked = 0;
  std::latch told{1};
  PlaceDirectory directory{
      std::make_unique<CountingGeocoder>(asked), {}, [&] { told.count_down(); }};
  directory.request({"1.0000,0.0000"}, "en");
  told.wait();
  EXPECT_EQ(asked, 1);
}

TEST(PlaceDirectory, end_dropsWhatHasNotBegun) {
  std::atomic<int> asked = 0;
  std::latch gate{1};
  std::jthread opener;
  {
    PlaceDirectory directory{std::make_unique<CountingGeocoder>(asked, &gate), {}};
    std::vector<std::string> keys;
    for (int i = 0; i < 1000; ++i) keys.push_back(PlaceCells::keyAt({i * 0.01, 0}));
    directory.request(keys, "en");
    while (asked == 0) std::this_thread::yield();
    // The gate opens late enough that the destructor of the directory has begun.
    opener = std::jthread{[&] {
      std::this_thread::sleep_for(std::chrono::milliseconds{200});
      gate.count_down();
    }};
  }
  EXPECT_EQ(asked, 1);
}

TEST(NamedCells, districts_goByTheirCityWhenAsked) {
  auto world = std::make_shared<Directory>();
  const std::shared_ptr<const PlaceDirectory> directory{world, &world->directory};
  const auto cells = std::make_shared<PlaceCells>(std::vector<GeoPoint>{{1, 0}}, 2);
  const NamedCells apart{cells, directory, false};
  const NamedCells merged{cells, directory, true};
  const std::string key = apart.placeKey({1.001, 0});
  EXPECT_EQ(apart.names(key, "en"), std::nullopt);
  world->directory.request(cells->keys(), "en");
  world->directory.wait();
  EXPECT_EQ(apart.names(key, "en"), (PlaceNames{"City 1", "Land", "AA", {}, "city 5"}));
  EXPECT_EQ(merged.names(key, "en"), (PlaceNames{"Main", "Land", "AA", {}, "city 6"}));
}

TEST(NamedCells, quarters_areThoseOfTheCityOfTheCell) {
  auto world = std::make_shared<Directory>();
  const std::shared_ptr<const PlaceDirectory> directory{world, &world->directory};
  const auto districts = std::make_shared<const GeocodedDistricts>(directory);
  const auto cells = std::make_shared<PlaceCells>(std::vector<GeoPoint>{{1, 0}}, 2);
  const NamedCells apart{cells, directory, false, districts};
  const NamedCells merged{cells, directory, true, districts};
  const std::string key = cells->keys().front();
  EXPECT_EQ(apart.district({5, 0}, key, "en"), std::nullopt) << "the cell has no names yet";
  world->directory.request(cells->keys(), "en");
  world->directory.wait();
  world->asked = 0;
  EXPECT_EQ(apart.district({5, 0}, key, "en"), (PlaceDistrict{"Quarter", 9}));
  EXPECT_EQ(apart.district({6, 0}, key, "en"), (PlaceDistrict{"Quarter", 9})) << "the main city's";
  EXPECT_EQ(apart.district({4, 0}, key, "en"), std::nullopt) << "of another city";
  EXPECT_EQ(world->asked, 2);
  EXPECT_EQ(apart.district({5.0009, 0.0009}, key, "en_GB"), (PlaceDistrict{"Quarter", 9}));
  EXPECT_EQ(world->asked, 2) << "the same spot";
  EXPECT_EQ(apart.district({95, 0}, key, "en"), std::nullopt);
  EXPECT_EQ(merged.district({5, 0}, key, "en"), std::nullopt);
}

}  // namespace
}  // namespace tavrix
