#include <fmt/format.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>
#include <numbers>
#include <random>
#include <unordered_set>

#include "Benches.h"
#include "Measure.h"
#include "SyntheticLibrary.h"
#include "grouping/PlaceClustering.h"
#include "grouping/PlaceTree.h"
#include "media/BundleBuilder.h"
#include "places/CityChoice.h"
#include "places/Gazetteer.h"
#include "places/NamedCells.h"

namespace tavrix::bench {
namespace {

constexpr const char* tablePath = TAVRIX_RESOURCES "/gazetteer.bin";
constexpr std::size_t lookupCount = 1'000'000;
constexpr std::size_t comparedCount = 10'000;

/// Returns points spread evenly over the Earth, most of them at sea.
std::vector<GeoPoint> pointsAnywhere(std::size_t count) {
  std::mt19937_64 random{1};
  std::uniform_real_distribution<double> height{-1, 1};
  std::uniform_real_distribution<double> longitude{-180, 180};
  std::vector<GeoPoint> points;
  for (std::size_t i = 0; i < count; ++i) {
    points.push_back({std::asin(height(random)) * 180 / std::numbers::pi, longitude(random)});
  }
  return points;
}

/// Returns points about ten kilometres around places of the table, where people live.
std::vector<GeoPoint> pointsAroundPlaces(const GazetteerTable& table, std::size_t count) {
  std::mt19937_64 random{2};
  std::uniform_int_distribution<std::size_t> anyPlace{0, table.size() - 1};
  std::normal_distribution<double> shift{0, 0.1};
  std::vector<GeoPoint> points;
  for (std::size_t i = 0; i < count; ++i) {
    const GeoPoint place = table.pointAt(anyPlace(random));
    points.push_back({place.latitude + shift(random), place.longitude + shift(random)});
  }
  return points;
}

/// Finds the choice by scanning all places, skipping those too far away by latitude alone.
std::optional<CityChoice::Choice> scanned(const GazetteerTable& table, const GeoPoint& point) {
  const auto country = table.borders().countryAt(point);
  struct Reaching {
    CityChoice::Choice choice;
    bool isPart;
  };
  std::vector<Reaching> reaching;
  double nearest = std::numeric_limits<double>::infinity();
  CityChoice::Regions regions{0, CityChoice::regionAllAround(table, point)};
  for (std::size_t i = 0; i < table.size(); ++i) {
    const GeoPoint place = table.pointAt(i);
    if (std::abs(place.latitude - point.latitude) > 1) continue;
    const double distance = haversineDistanceKm(point, place);
    const std::uint32_t population = table.populationAt(i);
    if (distance > CityChoice::reachKm(population)) continue;
    if (!CityChoice::isSameSide(table, i, country)) continue;
    const std::size_t city = table.cityAt(i).value();
    reaching.push_back({{city, CityChoice::score(distance, population)}, city != i});
    if (distance < nearest) nearest = distance, regions.nearest = table.regionNumberAt(city);
  }
  std::optional<CityChoice::Choice> best;
  for (auto& [choice, isPart] : reaching) {
    choice.score += CityChoice::regionScore(table, choice.index, choice.score, isPart, regions);
    if (!best || choice.score < best->score) best = choice;
  }
  return best;
}

void benchOpening() {
  const Duel opening = duel(
      20, [] { Gazetteer::open(tablePath); },
      [] {
        std::ifstream file{tablePath, std::ios::binary};
        const std::string bytes{std::istreambuf_iterator<char>{file}, {}};
        if (bytes.empty()) std::abort();
      });
  print({fmt::format("opening the table ({} bytes) in {:.0f} µs : reading it",
                     std::filesystem::file_size(tablePath), opening.ours * 1e6),
         time(opening.ours), time(opening.theirs), opening.ratio(), 0.1});
}

void benchLookups(const Gazetteer& gazetteer, const char* where,
                  const std::vector<GeoPoint>& points) {
  const GazetteerTable& table = gazetteer.table();
  std::size_t named = 0;
  const double ours = seconds([&] {
    for (const GeoPoint& point : points) {
      if (gazetteer.resolve(point, "en_US")->city) ++named;
    }
  });
  const double perLookup = ours / static_cast<double>(points.size());
  std::size_t equal = 0;
  const double theirs = seconds([&] {
    for (std::size_t i = 0; i < comparedCount; ++i) {
      const auto chosen = CityChoice::cityAt(table, points[i]);
      const auto best = scanned(table, points[i]);
      if (chosen == best) ++equal;
    }
  });
  if (equal != comparedCount) std::abort();
  const double perScan = theirs / comparedCount;
  print({fmt::format("names of {} points {}, {:.0f}/s, {} named : a scan each", points.size(),
                     where, 1 / perLookup, named),
         time(ours), time(perScan * static_cast<double>(points.size())), perLookup / perScan,
         0.05});
}

/// A geocoder that counts its queries.
class CountedGazetteer : public Geocoder {
 public:
  explicit CountedGazetteer(std::size_t& asked) : asked_(asked) {}
  std::string source() const override { return gazetteer_->source(); }
  std::optional<GeocodedPlace> resolve(const GeoPoint& point,
                                       const std::string& localeID) const override {
    ++asked_;
    return gazetteer_->resolve(point, localeID);
  }

 private:
  std::unique_ptr<const Gazetteer> gazetteer_ = Gazetteer::open(tablePath);
  std::size_t& asked_;
};

/// Returns shots that all have a position, each near one of several inhabited points of the Earth.
std::vector<AssetBundle> locatedShots(const Gazetteer& gazetteer, std::size_t count,
                                      std::size_t places) {
  const auto homes = pointsAroundPlaces(gazetteer.table(), places);
  std::mt19937_64 random{3};
  std::normal_distribution<double> shift{0, 0.01};
  std::vector<MediaAsset> assets;
  assets.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    const GeoPoint& home = homes[i % places];
    const std::string name = fmt::format("IMG_{:07}.JPG", i);
    const GeoPoint point{home.latitude + shift(random), home.longitude + shift(random)};
    assets.emplace_back(name, name, std::nullopt, MediaKind::photo, 1, std::nullopt, point, false,
                        std::nullopt, std::nullopt);
  }
  return BundleBuilder::makeBundles(assets);
}

/// Measures the cells, the names in two languages and the tree of a library, as shown to the user.
void benchLibrary(const Gazetteer& gazetteer, std::size_t shots, std::size_t places) {
  const auto bundles = locatedShots(gazetteer, shots, places);
  std::vector<GeoPoint> points;
  for (const AssetBundle& bundle : bundles) points.push_back(*bundle.position());
  std::size_t asked = 0;
  std::size_t cellCount = 0;
  const double clustering = seconds([&] { PlaceClustering::assign(points, 2); });
  const double naming = seconds([&] {
    const auto cells = std::make_shared<PlaceCells>(points, 2, gazetteer.borders());
    std::unordered_set<std::string> keys;
    for (const GeoPoint& point : points) keys.insert(cells->keyOf(point));
    const auto directory = std::make_shared<PlaceDirectory>(
        std::make_unique<CountedGazetteer>(asked), GeocodingCache{});
    for (const char* language : {"en", "ru"})
      directory->request({keys.begin(), keys.end()}, language);
    directory->wait();
    cellCount = keys.size();
    const NamedCells lookup{cells, directory, false};
    if (placeTree(bundles, &lookup, "ru_RU").unresolvedCount != 0) std::abort();
  });
  if (asked != 2 * cellCount) std::abort();
  print({fmt::format("names and tree of {} shots in {} cells : clustering alone", shots, cellCount),
         time(naming), time(clustering), naming / clustering, 7});
}

}  // namespace

void benchPlaces(const std::string&) {
  benchOpening();
  const auto gazetteer = Gazetteer::open(tablePath);
  benchLookups(*gazetteer, "anywhere", pointsAnywhere(lookupCount));
  benchLookups(*gazetteer, "around places", pointsAroundPlaces(gazetteer->table(), lookupCount));
  for (const std::size_t shots : {std::size_t{250'000}, std::size_t{1'000'000}})
    benchLibrary(*gazetteer, shots, 3'000);
}

}  // namespace tavrix::bench
