// Points that people photograph, with the names that they would expect. The list was written from
// general knowledge and maps, not from the table. The columns of check-list.tsv, separated by tabs:
// a description, latitude, longitude, the correct English and Russian names (empty if not checked),
// the country, the group (whether the choice among the places was fitted to the point, the point
// was kept aside, written last, or written after the areas of regions: "across") and, if the table
// is wrong, the result of the table.

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "places/Gazetteer.h"

namespace tavrix {
namespace {

struct Place {
  std::string what;
  GeoPoint point;
  std::string english;
  std::string russian;
  std::string country;
  std::string group = "";
  std::string found = "";  ///< name and country; empty if the table is right
};

std::vector<Place> placesIn(const std::string& fileName) {
  std::ifstream file{TAVRIX_TEST_DATA "/" + fileName};
  std::vector<Place> places;
  for (std::string line; std::getline(file, line);) {
    std::istringstream fields{line};
    std::vector<std::string> field(8);
    for (std::string& each : field) std::getline(fields, each, '\t');
    places.push_back({field[0],
                      {std::stod(field[1]), std::stod(field[2])},
                      field[3],
                      field[4],
                      field[5],
                      field[6],
                      field[7]});
  }
  return places;
}

const Gazetteer& gazetteer() {
  static const auto opened = Gazetteer::open(TAVRIX_RESOURCES "/gazetteer.bin");
  return *opened;
}

/// Returns the city and the country of a point, such as "Rome, IT".
std::string nameAt(const GeoPoint& point) {
  const auto place = gazetteer().resolve(point, "en_US");
  return place->city.value_or("") + ", " + place->countryCode.value_or("");
}

/// Returns true if `name` is one of several names separated by bars.
bool isOneOf(const std::string& names, const std::string& name) {
  return ("|" + names + "|").find("|" + name + "|") != std::string::npos;
}

TEST(CheckList, knownPlaces_haveTheirNames) {
  std::set<std::string> countries;
  std::map<std::string, int> right;
  std::map<std::string, int> all;
  for (const Place& place : placesIn("check-list.tsv")) {
    SCOPED_TRACE(place.what);
    countries.insert(place.country);
    ++all[place.group];
    const auto english = gazetteer().resolve(place.point, "en_US");
    const bool isRight =
        isOneOf(place.english, english->city.value_or("")) && english->countryCode == place.country;
    if (isRight) ++right[place.group];
    if (place.found.empty()) {
      EXPECT_TRUE(isRight) << nameAt(place.point);
      const auto russian = gazetteer().resolve(place.point, "ru_RU")->city;
      EXPECT_TRUE(place.russian.empty() || isOneOf(place.russian, russian.value_or("")))
          << *russian;
    } else {
      EXPECT_EQ(nameAt(place.point), place.found) << "no longer the miss that is written down";
    }
  }
  EXPECT_GE(countries.size(), 60U);
  for (const auto& [group, count] : all) {
    EXPECT_GE(count, 75) << group;
    EXPECT_GE(right[group], count * 8 / 10) << group;
  }
}

/// Far from every town the gazetteer returns the region. The columns of wild-list.tsv: a
/// description, latitude, longitude, the correct English and Russian names of the region (empty if
/// not checked), the country and, if the table is wrong, the result of the table.
TEST(CheckList, wildPlaces_haveTheNamesOfTheirRegions) {
  int right = 0;
  const auto list = placesIn("wild-list.tsv");
  for (const Place& place : list) {
    SCOPED_TRACE(place.what);
    const auto english = gazetteer().resolve(place.point, "en_US");
    const auto russian = gazetteer().resolve(place.point, "ru_RU");
    const std::string found = english->names(false).cityOrRegion().value_or("") + ", " +
                              english->countryCode.value_or("") + ", " +
                              russian->names(false).cityOrRegion().value_or("");
    const bool isRight =
        !english->city && isOneOf(place.english, english->region.value_or("")) &&
        english->countryCode == place.country &&
        (place.russian.empty() || isOneOf(place.russian, russian->region.value_or("")));
    if (isRight) ++right;
    if (place.group.empty()) {
      EXPECT_TRUE(isRight) << found;
    } else {
      EXPECT_EQ(found, place.group) << "no longer the miss that is written down";
    }
  }
  EXPECT_GE(list.size(), 100U);
  EXPECT_GE(right, static_cast<int>(list.size()) * 4 / 5);
}

TEST(CheckList, openSea_hasNoName) {
  for (const GeoPoint& point : {GeoPoint{30, -40}, GeoPoint{0, 0}, GeoPoint{30, 180},
                                GeoPoint{90, 0}, GeoPoint{-55, 100}}) {
    EXPECT_EQ(gazetteer().resolve(point, "en_US"), GeocodedPlace{});
  }
}

}  // namespace
}  // namespace tavrix
