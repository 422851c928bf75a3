#include <gmock/gmock.h>

#include <cmath>
#include <map>

#include "grouping/PlaceClustering.h"
#include "grouping/PlaceTree.h"
#include "grouping/tests/GroupingTester.h"
#include "media/BundleBuilder.h"

namespace tavrix {
namespace {

using PlaceClustering::clusters;
using testing::ElementsAre;
using testing::SizeIs;

constexpr double halfCircumferenceKm = 20015.086796020572;

TEST(Haversine, distances_areThoseOfTheSphere) {
  EXPECT_DOUBLE_EQ(haversineDistanceKm({0, 0}, {0, 0}), 0);
  EXPECT_NEAR(haversineDistanceKm({0, 0}, {0, 180}), halfCircumferenceKm, 1e-9);
  EXPECT_NEAR(haversineDistanceKm({37, 12}, {-37, -168}), halfCircumferenceKm, 1e-3);
  EXPECT_NEAR(haversineDistanceKm({0, 179.5}, {0, -179.5}), kmOfDegree, 1e-9);
  EXPECT_NEAR(haversineDistanceKm({55.7558, 37.6173}, {41.9028, 12.4964}), 2377,
              5);  // Moscow to Rome
}

TEST(PlaceClustering, radius_decidesAndItsEdgeBelongsToIt) {
  const GeoPoint here{45, 10};
  const auto north = [&](double km) { return GeoPoint{45 + km / kmOfDegree, 10}; };
  EXPECT_THAT(clusters({here, north(1.9)}, 2), SizeIs(1));
  EXPECT_THAT(clusters({here, north(2.1)}, 2), SizeIs(2));
  const double exactly = haversineDistanceKm(here, north(2));
  EXPECT_THAT(clusters({here, north(2)}, exactly), SizeIs(1));
  EXPECT_THAT(clusters({here, north(2)}, std::nextafter(exactly, 0)), SizeIs(2));
}

TEST(PlaceClustering, centreMoves_soThatOrderMatters) {
  const auto north = [](double km) { return GeoPoint{45 + km / kmOfDegree, 10}; };
  EXPECT_THAT(clusters({north(0), north(1.8), north(2.8)}, 2), SizeIs(1));
  EXPECT_THAT(clusters({north(0), north(2.8), north(1.8)}, 2), SizeIs(2));
  // Both centres are near enough; the point joins the earlier cluster.
  const auto two = clusters({north(0), north(3), north(1.6)}, 2);
  ASSERT_THAT(two, SizeIs(2));
  EXPECT_THAT(two[0].points, ElementsAre(north(0), north(1.6)));
}

TEST(PlaceClustering, oddRadii_needNoGrid) {
  const std::vector<GeoPoint> points{{0, 0}, {0, 0}, {0, 1e-9}, {0, 180}};
  EXPECT_THAT(clusters(points, 0), SizeIs(3));
  EXPECT_THAT(clusters(points, -1), SizeIs(3));
  EXPECT_THAT(clusters(points, halfCircumferenceKm), SizeIs(1));
  EXPECT_THAT(clusters(points, 1e300), SizeIs(1));
  EXPECT_THAT(clusters(points, std::nan("")), SizeIs(4));
  EXPECT_THAT(clusters({}, 2), SizeIs(0));
}

TEST(PlaceClustering, meridianAndPoles_haveNoSeam) {
  EXPECT_THAT(clusters({{10, 179.999}, {10, -179.999}}, 2), SizeIs(1));
  EXPECT_THAT(clusters({{89.999, 0}, {89.999, 180}, {89.999, 90}}, 2), SizeIs(1));
}

TEST(UnitVectorSum, vectorsThatCancel_fallBackToTheFirstPoint) {
  PlaceClustering::UnitVectorSum sum;
  EXPECT_EQ(sum.center({1, 2}), (GeoPoint{1, 2}));
  sum.add({0, 30});
  sum.add({0, -150});
  EXPECT_EQ(sum.center({0, 30}), (GeoPoint{0, 30}));
  EXPECT_EQ(sum.count, 2);
  sum.add({0, 60});
  EXPECT_NEAR(sum.center({0, 30}).longitude, 60, 1e-9);
}

/// Returns the same clusters as clusters(), by comparing every point with every cluster.
std::vector<PlaceClustering::Cluster> clustersOneByOne(const std::vector<GeoPoint>& points,
                                                       double radiusKm) {
  std::vector<PlaceClustering::Cluster> result;
  std::vector<PlaceClustering::UnitVectorSum> sums;
  for (const GeoPoint& point : points) {
    std::size_t i = 0;
    while (i < result.size() && haversineDistanceKm(result[i].center, point) > radiusKm) ++i;
    if (i == result.size()) {
      result.push_back({point, {}});
      sums.emplace_back();
    }
    result[i].points.push_back(point);
    sums[i].add(point);
    if (result[i].points.size() > 1) result[i].center = sums[i].center(result[i].points.front());
  }
  return result;
}

TEST(PlaceClustering, grid_findsWhatLookingEverywhereFinds) {
  std::uint64_t state = 5;
  const auto random = [&] {
    state = state * 6364136223846793005U + 1442695040888963407U;
    return static_cast<double>(state >> 33U) / (1U << 31U);
  };
  for (const double radius : {0.0, 1e-7, 0.5, 2.0, 50.0, 3000.0, 15000.0}) {
    for (int round = 0; round < 10; ++round) {
      std::vector<GeoPoint> points;
      for (int i = 0; i < 150; ++i) {
        const double spread = std::min(170.0, radius / 20);
        points.push_back({std::clamp(80 * random() + spread * (random() - 0.5), -90.0, 90.0),
                          360 * random() - 180});
        points.push_back(
            {points.back().latitude, points.back().longitude + spread / 10 * random()});
      }
      EXPECT_EQ(clusters(points, radius), clustersOneByOne(points, radius)) << radius;
    }
  }
}

/// A lookup with cells of one degree, of which those in `known` have names.
class DegreeLookup : public PlaceLookup {
 public:
  std::string placeKey(const GeoPoint& point) const override {
    return std::to_string(static_cast<int>(point.latitude)) + "/" +
           std::to_string(static_cast<int>(point.longitude));
  }
  std::optional<PlaceNames> names(const std::string& key, const std::string&) const override {
    const auto found = known.find(key);
    return found == known.end() ? std::nullopt : std::optional{found->second};
  }
  std::map<std::string, PlaceNames> known;
};

TEST(PlaceTree, files_areCountedByCountryAndCity) {
  DegreeLookup lookup;
  lookup.known["41/12"] = {"Рим", "Италия", "IT"};
  lookup.known["45/9"] = {"Милан", "Италия", "IT"};
  lookup.known["55/37"] = {"Москва", "Россия", "RU"};
  lookup.known["0/0"] = {std::nullopt, "Ничья", std::nullopt};
  std::vector<MediaAsset> assets;
  const auto add = [&](const std::string& name, std::optional<GeoPoint> place) {
    assets.emplace_back(name, name, std::nullopt, MediaKind::photo, 1, std::nullopt, place, false,
                        std::nullopt, std::nullopt);
  };
  add("IMG_1.HEIC", GeoPoint{41.9, 12.5});
  add("IMG_1.AAE", std::nullopt);
  add("IMG_2.HEIC", GeoPoint{45.4, 9.2});
  add("IMG_3.HEIC", GeoPoint{55.7, 37.6});
  add("IMG_4.HEIC", GeoPoint{0.1, 0.1});
  add("IMG_5.HEIC", GeoPoint{10.1, 10.1});
  add("IMG_6.HEIC", GeoPoint{10.2, 10.2});
  add("IMG_7.HEIC", std::nullopt);
  const auto bundles = BundleBuilder::makeBundles(assets);
  const PlaceTree tree = placeTree(bundles, &lookup, "ru_RU");
  EXPECT_THAT(tree.countries,
              ElementsAre(PlaceTree::Country{"Италия", "IT", 3, {{"Рим", 2}, {"Милан", 1}}},
                          PlaceTree::Country{"Ничья", std::nullopt, 1, {}},
                          PlaceTree::Country{"Россия", "RU", 1, {{"Москва", 1}}}));
  EXPECT_EQ(tree.unplacedCount, 1U);
  EXPECT_EQ(tree.unresolvedCount, 2U);
  EXPECT_THAT(tree.unresolvedPoints, ElementsAre(GeoPoint{10.1, 10.1}));
  EXPECT_EQ(placeTree(bundles, nullptr, "ru_RU").unplacedCount, assets.size());
}

}  // namespace
}  // namespace tavrix
