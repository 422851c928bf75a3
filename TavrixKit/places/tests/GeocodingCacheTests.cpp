#include <gmock/gmock.h>

#include <fstream>
#include <random>
#include <sstream>

#include "foundation/files/FileError.h"
#include "foundation/tests/support/FaultyFolder.h"
#include "foundation/tests/support/TemporaryFolder.h"
#include "places/GeocodingCache.h"
#include "places/PlaceCells.h"

namespace tavrix {
namespace {

using testing::ElementsAre;

const GeocodingCache sample{"gazetteer 1.1",
                            {{"en",
                              {{"0.0000,-30.0000", {}},
                               {"36.0000,-112.0000", {{}, {}, "United States", "US", "Arizona"}},
                               {"41.9000,12.5005", {"Rome", {}, "Italy", "IT"}}}},
                             {"ru", {{"41.9000,12.5005", {"Рим", "Лацио", "Италия", "IT"}}}}}};

std::string exampleOfPage() {
  std::ifstream page{std::string{TAVRIX_DOCS} + "/geocache.md"};
  const std::string text{std::istreambuf_iterator<char>{page}, {}};
  const auto start = text.find("```json\n") + 8;
  return text.substr(start, text.find("```", start) - start);
}

TEST(GeocodingCache, encoding_roundTripsAndIsThatOfTheDescription) {
  EXPECT_EQ(GeocodingCacheFile::decode(GeocodingCacheFile::encode(sample)), sample);
  const auto example = GeocodingCacheFile::decode(exampleOfPage());
  ASSERT_TRUE(example);
  EXPECT_EQ(GeocodingCacheFile::encode(*example), exampleOfPage());
  EXPECT_EQ(example->languages.at("en").at("40.6501,-73.9496").mainCity, "New York City");
}

TEST(GeocodingCache, whatDoesNotFit_countsAsAbsent) {
  for (const std::string text :
       {"", "{", "[]", "{}", R"({"version":2,"source":"a","languages":{}})",
        R"({"version":"1","source":"a","languages":{}})", R"({"version":1,"languages":{}})",
        R"({"version":1,"source":"a","languages":[]})"}) {
    EXPECT_EQ(GeocodingCacheFile::decode(text), std::nullopt) << text;
  }
  const auto cache = GeocodingCacheFile::decode(R"({"version":1,"source":"a","languages":{
      "en":{"1,2":{"city":"A"},"north":{},"91,0":{},"0,181":{},"1":{},"1,2,3":{},"nan,0":{},
            "3,4":5,"5,6":{"city":7},"7,8":{"countryName":"B"}},
      "ru":[]}})");
  ASSERT_TRUE(cache);
  EXPECT_EQ(*cache, (GeocodingCache{
                        "a", {{"en", {{"1,2", {"A", {}, {}, {}}}, {"7,8", {{}, {}, "B", {}}}}}}}));
}

TEST(GeocodingCache, file_isKeptForItsSourceAlone) {
  const TemporaryFolder place;
  const auto folder = openFolder(place.path());
  EXPECT_EQ(GeocodingCacheFile::load(*folder, "gazetteer 1.1"),
            (GeocodingCache{"gazetteer 1.1", {}}));
  EXPECT_TRUE(GeocodingCacheFile::save(*folder, sample));
  EXPECT_EQ(GeocodingCacheFile::load(*folder, "gazetteer 1.1"), sample);
  EXPECT_EQ(GeocodingCacheFile::load(*folder, "other"), (GeocodingCache{"other", {}}));
  place.write("geocache.json", "damaged");
  EXPECT_EQ(GeocodingCacheFile::load(*folder, "other"), (GeocodingCache{"other", {}}));
  EXPECT_TRUE(GeocodingCacheFile::reset(*folder));
  EXPECT_FALSE(GeocodingCacheFile::reset(*folder));
  EXPECT_THAT(folder->names(), ElementsAre());
}

TEST(GeocodingCache, saving_keepsWhatAnotherProcessHasAddedMeanwhile) {
  const TemporaryFolder place;
  const auto one = openFolder(place.path());
  const auto saved = [&](const GeocodingCache& cache) {
    // The lock is released with the folder object.
    EXPECT_TRUE(GeocodingCacheFile::save(*openFolder(place.path()), cache));
    return GeocodingCacheFile::load(*one, "s");
  };
  const GeocodedPlace rome{"Rome", {}, "Italy", "IT"};
  const GeocodedPlace other{"Roma", {}, "Italy", "IT"};
  saved({"s", {{"en", {{"41,12", rome}}}}});
  EXPECT_EQ(
      saved({"s", {{"en", {{"1,1", {}}}}, {"ru", {{"41,12", other}}}}}),
      (GeocodingCache{"s", {{"en", {{"1,1", {}}, {"41,12", rome}}}, {"ru", {{"41,12", other}}}}}));
  EXPECT_EQ(saved({"s", {{"en", {{"41,12", other}}}}}).languages.at("en").at("41,12"), other);
  EXPECT_TRUE(one->lock());
  EXPECT_FALSE(GeocodingCacheFile::save(*openFolder(place.path()), {"s", {}}));
}

TEST(PlaceCells, pointOfTheLibrary_isInTheNearestCell) {
  std::mt19937 random{20261123};
  for (const double spread : {0.01, 0.05, 0.3}) {
    std::normal_distribution<double> shift{0, spread};
    std::vector<GeoPoint> points;
    for (int i = 0; i < 400; ++i) points.push_back({55.7 + shift(random), 37.6 + shift(random)});
    const PlaceCells cells{points, 2};
    const auto centers = PlaceClustering::assign(points, 2).centers;
    for (const GeoPoint& point : points) {
      std::string expected = PlaceCells::keyAt(point);
      double least = 2;
      for (const GeoPoint& center : centers) {
        const double distance = haversineDistanceKm(center, point);
        if (distance < least) least = distance, expected = PlaceCells::keyAt(center);
      }
      EXPECT_EQ(cells.keyOf(point), expected);
    }
  }
}

TEST(PlaceCells, nearPointsShareACell_andKeysLastFromRunToRun) {
  const PlaceCells cells{{{41.9, 12.5}, {41.9, 12.501}, {0, 179.9995}, {0, -179.9995}}, 2};
  EXPECT_THAT(cells.keys(), ElementsAre("0.0000,180.0000", "41.9000,12.5005"));
  for (const double longitude : {12.5, 12.501, 12.52}) {
    EXPECT_EQ(cells.keyOf({41.9, longitude}), "41.9000,12.5005");
  }
  EXPECT_EQ(cells.keyOf({0, -179.99}), "0.0000,180.0000");
  EXPECT_EQ(cells.keyOf({41.9, 12.6}), "41.9000,12.6000") << "a cell of its own";
  EXPECT_EQ(cells.keyOf({-0.000001, -0.000001}), "0.0000,0.0000") << "no sign before nothing";
  for (const std::string& key : cells.keys()) {
    EXPECT_EQ(PlaceCells::keyAt(PlaceCells::centerOf(key).value()), key);
  }
  const PlaceCells exact{{{1, 1}, {1, 1}, {1, 1.001}}, 0};
  EXPECT_THAT(exact.keys(), ElementsAre("1.0000,1.0000", "1.0000,1.0010"));
  EXPECT_EQ(exact.keyOf({1, 1.001}), "1.0000,1.0010");
}

}  // namespace
}  // namespace tavrix
