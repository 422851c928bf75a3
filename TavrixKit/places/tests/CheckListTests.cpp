// Points that people photograph, with the names that they would expect. The list was written from
// general knowledge and maps, not from the table. The columns of check-list.tsv, separated by tabs:
// a description, latitude, longitude, the correct English and Russian names (empty if not checked),
// the country, the group (whether the choice among the places was fitted to the point, or the point
// was kept aside or written last) and, if the table is wrong, the result of the table.

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

std::vector<Place> checkList() {
  std::ifstream file{TAVRIX_TEST_DATA "/check-list.tsv"};
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
  for (const Place& place : checkList()) {
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
    EXPECT_GE(right[group], count * 9 / 10) << group;
  }
}

/// Far from every town the gazetteer returns the right region or none, never another one.
TEST(CheckList, wildPlaces_areNotPutIntoAnotherRegionOrCountry) {
  const std::vector<Place> wild{
      {"Old Faithful", {44.4605, -110.8281}, "Wyoming", "Вайоминг", "US"},
      {"Chuya Highway", {50.4, 87.6}, "Altai Republic", "Республика Алтай", "RU"},
      {"Badwater", {36.23, -116.77}, "California", "Калифорния", "US"},
      {"Crater Lake", {42.94, -122.11}, "Oregon", "Орегон", "US"},
      {"Kolob Canyons", {37.43, -113.05}, "Utah", "Юта", "US"},
      {"Big Bend", {29.25, -103.25}, "Texas", "Техас", "US"},
      {"Cairngorms", {57.117, -3.644}, "Scotland", "Шотландия", "GB"},
      {"Algonquin Park", {45.83, -78.4}, "Ontario", "Онтарио", "CA"},
      {"Kings Canyon", {36.89, -118.55}, "California", "Калифорния", "US"},
      {"Fiordland", {-45.4, 167.2}, "Southland", "Саутленд", "NZ"},
      {"Satara", {-24.39, 31.78}, "Mpumalanga", "Мпумаланга", "ZA"},
      {"Nullarbor Plain", {-31.3, 130.2}, "South Australia", "Южная Австралия", "AU"},
      {"mid-Atlantic", {30, -40}, "", "", ""},
      {"off Africa", {0, 0}, "", "", ""},
      {"Pacific on the date line", {30, 180}, "", "", ""},
      {"North Pole", {90, 0}, "", "", ""},
      {"South Pole", {-90, 0}, "", "", ""},
  };
  int told = 0;
  for (const Place& place : wild) {
    const auto english = gazetteer().resolve(place.point, "en_US");
    const auto russian = gazetteer().resolve(place.point, "ru_RU");
    EXPECT_EQ(english->city, std::nullopt) << place.what;
    EXPECT_EQ(english->countryCode.value_or(place.country), place.country) << place.what;
    EXPECT_EQ(english->region.value_or(place.english), place.english) << place.what;
    EXPECT_EQ(russian->region.value_or(place.russian), place.russian) << place.what;
    if (english->region) ++told;
  }
  EXPECT_GE(told, 5);
}

}  // namespace
}  // namespace tavrix
