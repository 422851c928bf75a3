// Points that people photograph, with the names that they would expect. The list was written from
// general knowledge and maps, not from the table. The columns of check-list.tsv, separated by tabs:
// a description, latitude, longitude, the correct English and Russian names (empty if not checked),
// the country, the group (whether the choice among the places was fitted to the point, the point
// was kept aside, written last, or written after the areas of regions: "across") and, if the table
// is wrong, the result of the table.

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "places/CityChoice.h"
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

TEST(CheckList, townsWithoutARussianNameInTheSource_haveOneByTheRulesOfTheirLanguage) {
  struct Row {
    GeoPoint point;
    const char* russian;
  };
  const std::vector<Row> rows{
      {{41.289, -4.684}, "Ольмедо"},     {{39.7735, 8.581}, "Арбореа"},
      {{50.465, 17.006}, "Пачкув"},      {{49.05, 14.434}, "Глубока-над-Влтавоу"},
      {{57.178, 26.038}, "Яунпиебалга"}, {{37.76, 139.02}, "Сироне"},
      {{52.03, 10.605}, "Хорнбург"}};
  const GazetteerTable& table = gazetteer().table();
  for (const Row& row : rows) {
    const auto city = CityChoice::cityAt(table, row.point);
    ASSERT_TRUE(city) << row.russian;
    EXPECT_EQ(table.at(city->index).russianName, row.russian);
    EXPECT_TRUE(table.at(city->index).isTranscribed) << row.russian;
  }
  const auto rome = CityChoice::cityAt(table, {41.8902, 12.4922});
  EXPECT_FALSE(table.at(rome->index).isTranscribed) << "the source has this name";
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

/// Returns the name by which a folder with shots at this point alone is named: that of the quarter
/// if it is known and of the city or its main city.
std::string quarterOrCityAt(const GeoPoint& point, const std::string& localeID) {
  const auto city = gazetteer().resolve(point, localeID);
  const auto district = gazetteer().districtAt(point, localeID);
  const bool isOfCity =
      district && city->cityNumber &&
      (district->cityNumber == city->cityNumber || city->mainCityNumber == district->cityNumber);
  return isOfCity ? district->name : city->names(false).cityOrRegion().value_or("");
}

bool isAsciiLetter(char letter) {
  return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z');
}

/// The columns of district-list.tsv, which was written before the districts of the source were
/// looked at: a description, latitude, longitude, the city or boroughs that stand for no quarter,
/// the quarters that a person would accept and, if the table does not have one of them, its result.
/// The choice was fitted to the first, third, fifth… point.
TEST(CheckList, quarters_areRightOrNone) {
  struct Count {
    int right = 0;
    int none = 0;
    int wrong = 0;
  };
  Count halves[2];
  int russianNames = 0;
  std::size_t number = 0;
  for (const Place& place : placesIn("district-list.tsv")) {
    SCOPED_TRACE(place.what);
    const std::string& cities = place.english;
    const std::string& quarters = place.russian;
    const std::string& expected = place.country;
    const std::string found = quarterOrCityAt(place.point, "en_US");
    Count& count = halves[number++ % 2];
    if (isOneOf(quarters, found)) {
      ++count.right;
      EXPECT_EQ(expected, "");
      const std::string russian = quarterOrCityAt(place.point, "ru_RU");
      EXPECT_EQ(std::ranges::count_if(russian, isAsciiLetter), 0) << russian;
      if (gazetteer().districtAt(place.point, "ru_RU")) ++russianNames;
      continue;
    }
    ++(isOneOf(cities, found) ? count.none : count.wrong);
    EXPECT_EQ(found, expected) << "no longer the miss that is written down";
  }
  EXPECT_EQ(number, 193U);
  EXPECT_EQ(russianNames, 52);
  EXPECT_EQ(std::tuple(halves[0].right, halves[0].none, halves[0].wrong), std::tuple(36, 59, 2));
  EXPECT_EQ(std::tuple(halves[1].right, halves[1].none, halves[1].wrong), std::tuple(27, 67, 2));
}

TEST(CheckList, openSea_hasNoName) {
  for (const GeoPoint& point : {GeoPoint{30, -40}, GeoPoint{0, 0}, GeoPoint{30, 180},
                                GeoPoint{90, 0}, GeoPoint{-55, 100}}) {
    EXPECT_EQ(gazetteer().resolve(point, "en_US"), GeocodedPlace{});
  }
}

}  // namespace
}  // namespace tavrix
