#include "naming/GroupPlaces.h"

#include <gmock/gmock.h>

#include "grouping/GroupBuilder.h"
#include "media/BundleBuilder.h"
#include "naming/FolderNaming.h"
#include "naming/TypedTemplate.h"
#include "naming/WholeFolderDates.h"

namespace tavrix {
namespace {

using testing::ElementsAre;

/// A lookup with cells of one degree; the names belong to cells.
class DegreeCells : public PlaceLookup {
 public:
  std::string placeKey(const GeoPoint& point) const override {
    return std::to_string(static_cast<int>(point.latitude));
  }
  std::optional<PlaceNames> names(const std::string& key, const std::string&) const override {
    const auto found = known.find(key);
    return found == known.end() ? std::nullopt : std::optional{found->second};
  }
  std::optional<GeoPoint> center(const std::string& key) const override {
    return GeoPoint{std::stod(key) + 0.5, 7};
  }

  /// The quarters of Cologne are a tenth of a degree wide.
  std::optional<PlaceDistrict> district(const GeoPoint& point, const std::string& key,
                                        const std::string&) const override {
    const auto tenth = static_cast<std::uint32_t>(point.latitude * 10) % 10;
    if ((key != "50" && key != "51") || tenth == 0) return std::nullopt;
    return PlaceDistrict{"Quarter " + std::to_string(tenth), tenth};
  }

  std::map<std::string, PlaceNames> known{
      {"50", {"Cologne", "Germany", "DE", {}, "city 1"}},
      {"51", {"Köln", "Germany", "DE", {}, "city 1"}},
      {"41", {"Rome", "Italy", "IT", {}, "city 2"}},
      {"45", {"Milan", "Italy", "IT", {}, "city 3"}},
      {"20", {{}, "India", "IN", "Goa", "region 4"}},
      {"10", {{}, "Chad", "TD", {}, "country TD"}},
      {"0", {}},
  };
};

MediaGroup groupAt(const std::vector<double>& latitudes) {
  std::vector<MediaAsset> assets;
  for (const double latitude : latitudes) {
    const std::string name = "IMG_" + std::to_string(assets.size()) + ".JPG";
    assets.emplace_back(name, name, MediaAsset::Text{}, MediaKind::photo, 1U,
                        Instant{std::chrono::seconds{assets.size()}}, GeoPoint{latitude, 7}, false,
                        MediaAsset::Text{}, MediaAsset::Text{});
  }
  GroupBuilder builder{"group"};
  for (const AssetBundle& bundle : BundleBuilder::makeBundles(assets)) builder.addUndated(bundle);
  return std::move(builder).finish();
}

TEST(GroupPlaces, cityWithMostShots_isTheFirst_howeverManyCellsItHas) {
  const auto cityOf = [](const std::vector<double>& latitudes, bool severalCities = false) {
    return placesOf(groupAt(latitudes), DegreeCells{}, "en").city(severalCities).value_or("-");
  };
  EXPECT_EQ(cityOf({50.1, 50.2, 41.5, 50.3, 51.1}), "Cologne");
  EXPECT_EQ(cityOf({41.1, 41.2, 50.1, 51.1, 51.2}), "Cologne");  // two cells, one city
  EXPECT_EQ(cityOf({41.1, 50.1}), "Rome");                       // the first of equals
  EXPECT_EQ(cityOf({45.1, 20.1, 20.2}), "Goa");
  EXPECT_EQ(cityOf({45.1, 10.1, 10.2}), "-");    // only a country
  EXPECT_EQ(cityOf({0.1, 0.2, 45.1}), "Milan");  // shots at sea have no place
  EXPECT_EQ(cityOf({}), "-");
  EXPECT_EQ(cityOf({50.1, 50.1, 41.1, 45.1, 20.1}, true), "Cologne, Rome");
  EXPECT_EQ(cityOf({50.1, 41.1}, true), "Cologne");  // half is enough
  EXPECT_EQ(cityOf({50.1, 10.1, 45.1}, true), "Cologne");
}

TEST(GroupPlaces, quarter_namesAFolderIfMostShotsAreInIt) {
  const auto nameOf = [](const std::vector<double>& latitudes, bool severalCities = false) {
    return placesOf(groupAt(latitudes), DegreeCells{}, "en")
        .districtOrCity(severalCities)
        .value_or("-");
  };
  EXPECT_EQ(nameOf({50.15, 50.16, 50.15, 50.25}), "Quarter 1");
  EXPECT_EQ(nameOf({50.15, 51.16}), "Quarter 1") << "two cells of one city";
  EXPECT_EQ(nameOf({50.15, 50.25}), "Cologne") << "half is not enough";
  EXPECT_EQ(nameOf({50.15, 50.25, 50.35, 50.05}), "Cologne") << "a walk all over the city";
  EXPECT_EQ(nameOf({50.15, 50.15, 41.1, 45.1}), "Cologne") << "half of all located shots";
  EXPECT_EQ(nameOf({50.15, 50.15, 50.15, 41.1, 45.1}), "Quarter 1");
  EXPECT_EQ(nameOf({50.15, 50.15, 0.1, 0.2}), "Cologne") << "shots at sea are located";
  EXPECT_EQ(nameOf({50.15, 70.1, 70.2}), "Cologne") << "so are those that have no names yet";
  EXPECT_EQ(nameOf({50.15, 50.16, 41.1}, true), "Quarter 1");
  EXPECT_EQ(nameOf({50.15, 50.16, 41.1, 41.2, 45.1}, true), "Cologne, Rome");
  EXPECT_EQ(nameOf({41.1, 41.2}), "Rome");
  EXPECT_EQ(nameOf({}), "-");
}

TEST(GroupPlaces, place_isTheCellOfTheCityNearestToTheCentre) {
  const auto places = placesOf(groupAt({51.9, 51.8, 50.1, 41.1}), DegreeCells{}, "en");
  ASSERT_EQ(places.places.size(), 2U);
  EXPECT_EQ(places.places[0].shots, 3U);
  EXPECT_EQ(places.places[0].center, (GeoPoint{50.5, 7}));
  EXPECT_EQ(places.places[0].key, "50");
  EXPECT_EQ(places.locatedShots, 4U);
  EXPECT_THAT(placesOf(groupAt({70.1, 70.2, 80.1}), DegreeCells{}, "en").unresolved,
              ElementsAre(GeoPoint{70.1, 7}, GeoPoint{80.1, 7}));
}

TEST(WholeFolderDates, blocksThatANameOfAMonthOrYearHasNoUseFor_areLeftOut) {
  const auto changed = [](const char* text, DateGranularity unit) {
    const auto typed = std::get<NameTemplate>(TypedTemplate::parse(text));
    return TypedTemplate::print(withWholeDates(typed, unit)).value_or("-");
  };
  using enum DateGranularity;
  EXPECT_EQ(changed("{year}-{month}-{day} — {city}", day), "{year}-{month}-{day} — {city}");
  EXPECT_EQ(changed("{year}-{month}-{day} — {city}", month), "{year}-{month} — {city}");
  EXPECT_EQ(changed("{year}-{month}-{day} — {city}", year), "{year} — {city}");
  EXPECT_EQ(changed("{day}.{month}.{year}", month), "{month}.{year}");
  EXPECT_EQ(changed("Photos {day}.{month}.{year}", year), "Photos {year}");
  EXPECT_EQ(changed("{city}, {day} {month} {year}", month), "{city} {month} {year}");
  EXPECT_EQ(changed("{day}", month), "{day}");
  EXPECT_EQ(changed("{month}-{day}", year), "{month}-{day}");
}

}  // namespace
}  // namespace tavrix
