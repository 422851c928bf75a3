#include <gmock/gmock.h>

#include <fstream>
#include <limits>
#include <random>
#include <sstream>

#include "foundation/Sanitizers.h"
#include "foundation/Text.h"
#include "foundation/files/FileError.h"
#include "places/CityChoice.h"
#include "places/GeocodedZones.h"
#include "places/PlaceCells.h"
#include "places/tests/TableMaker.h"

namespace tavrix {
namespace {

using std::numbers::pi;
constexpr double kmOfDegree = pi * earthDiameterKm / 360;

/// Returns a point that many kilometres north and east of 10° north 20° east.
GeoPoint off(double north, double east = 0) {
  return {10 + north / kmOfDegree, 20 + east / (kmOfDegree * std::cos(10 * pi / 180))};
}

/// Returns an area of AA south and one of BB north of a border `north` kilometres north of off(0).
std::vector<MadeArea> borderAt(double north) {
  const auto land = [&](const char* country, double from, double to) {
    return MadeArea{country, {off(from, -300), off(from, 300), off(to, 300), off(to, -300)}};
  };
  return {land("AA", north - 500, north), land("BB", north, north + 500)};
}

MadePlace partOf(const std::string& city, const GeoPoint& point) {
  MadePlace part{"", point, 40'000};
  part.partOf = city;
  return part;
}

struct Row {
  const char* what;
  std::vector<MadePlace> places;
  GeoPoint point;
  std::string city;  ///< empty if no city is expected
  std::string country;
  std::vector<MadeArea> areas{};
};

const MadePlace metropolis{"Metropolis", off(0), 8'000'000};

TEST(Gazetteer, city_isThePlaceWhoseSizeReachesThePoint) {
  const std::vector<Row> rows{
      {"a village two kilometres from the point does not beat the city around it",
       {metropolis, {"Village", off(12), 1500}},
       off(10),
       "Metropolis",
       "AA"},
      {"a town beside the city keeps its middle",
       {metropolis, {"Town", off(20), 250'000, "AA", 2}},
       off(19.5),
       "Town",
       "AA"},
      {"the nearer of two villages",
       {{"West", off(0, -3)}, {"East", off(0, 4)}},
       off(0),
       "West",
       "AA"},
      {"outside its radius a city does not beat a village nearby",
       {{"City", off(27), 1'000'000}, {"Village", off(-3)}},
       off(0),
       "Village",
       "AA"},
      {"a city still has a point close to its edge",
       {{"City", off(17), 1'000'000}, {"Village", off(-4)}},
       off(0),
       "City",
       "AA"},
      {"a part of a city goes by the city",
       {metropolis, {"Town", off(35), 80'000}, partOf("Metropolis", off(32))},
       off(31.5),
       "Metropolis",
       "AA"},
      {"at the edge of a city it is a town of the region that the point lies in",
       {metropolis, {"Town", off(30), 20'000, "AA", 2}, {"Hamlet", off(25), 500, "AA", 2}},
       off(26.5),
       "Town",
       "AA"},
      {"in the same region it is the city",
       {metropolis, {"Town", off(30), 20'000}, {"Hamlet", off(25), 500}},
       off(26.5),
       "Metropolis",
       "AA"},
      {"a village 12 km off names nothing, its country does",
       {{"Village", off(12)}},
       off(0),
       "",
       "AA",
       borderAt(100)},
      {"nothing 200 km from everything", {metropolis, {"Village", off(5)}}, off(210), "", ""},
      {"a town beside another country's city keeps its side",
       {metropolis, {"Town", off(8), 20'000, "BB"}},
       off(3),
       "Town",
       "BB",
       borderAt(2)},
      {"that city keeps its own, close to the town as it is",
       {metropolis, {"Town", off(2.5), 20'000, "BB"}},
       off(1.9),
       "Metropolis",
       "AA",
       borderAt(2)},
      {"a town that the areas put into the wrong country keeps what fits it best",
       {metropolis, {"Town", off(8), 20'000, "BB", 1, 0, false, "", "", true}},
       off(8.3),
       "Town",
       "BB",
       borderAt(50)},
      {"no city of another country, but the country of the point",
       {{"Village", off(3), 1000, "BB"}, {"Far", off(-200)}},
       off(0),
       "",
       "AA",
       borderAt(1)},
      {"over the date line", {{"Far", {0, -179.98}}}, {0, 179.98}, "Far", "AA"},
      {"over the date line westward", {{"Far", {0, 179.98}}}, {0, -179.98}, "Far", "AA"},
      {"across the pole", {{"Far", {89.97, 0}}}, {89.97, 180}, "Far", "AA"},
      {"at the southern pole", {{"Pole", {-90, 0}}}, {-89.99, 77}, "Pole", "AA"},
  };
  for (const Row& row : rows) {
    const auto gazetteer = gazetteerOf(madeTable(row.places, {}, row.areas));
    const auto place = gazetteer.resolve(row.point, "en_US");
    ASSERT_TRUE(place) << row.what;
    EXPECT_EQ(place->city.value_or(""), row.city) << row.what;
    EXPECT_EQ(place->countryCode.value_or(""), row.country) << row.what;
  }
}

TEST(Gazetteer, mainCity_gathersWhatBelongsToOneCity) {
  const auto mainCityOf = [](const MadePlace& part) {
    return gazetteerOf(madeTable({metropolis, part}))
        .resolve(part.point, "en_US")
        ->mainCity.value_or("");
  };
  EXPECT_EQ(mainCityOf({"Quarter", off(9), 2'000'000}), "Metropolis");
  const MadePlace quarter{"Quarter", off(9), 2'000'000};
  const MadePlace beach{"Beach", off(13), 60'000};
  EXPECT_EQ(
      gazetteerOf(madeTable({metropolis, quarter, beach})).resolve(beach.point, "en")->mainCity,
      "Metropolis")
      << "and not the quarter that it is a part of";
  EXPECT_EQ(mainCityOf({"Equal", off(9), 7'000'000}), "");
  EXPECT_EQ(mainCityOf({"Outside", off(28), 200'000}), "");
  EXPECT_EQ(mainCityOf({"Other region", off(9), 200'000, "AA", 2}), "");
  EXPECT_EQ(mainCityOf({"Other country", off(9), 200'000, "BB"}), "");
  const MadePlace seat{"Seat", off(0), 8'000'000, "AA", 1, 5};
  const MadePlace suburb{"Suburb", off(9), 200'000, "AA", 1, 6};
  EXPECT_EQ(gazetteerOf(madeTable({seat, suburb})).resolve(suburb.point, "en")->mainCity,
            std::nullopt);
  const GeocodedPlace place{"Quarter", "Metropolis", "Land", "AA"};
  EXPECT_EQ(place.names(true), (PlaceNames{"Metropolis", "Land", "AA"}));
  EXPECT_EQ(place.names(false), (PlaceNames{"Quarter", "Land", "AA"}));
}

TEST(Gazetteer, region_isToldAloneWhereNoCityReaches) {
  const std::vector<MadeRegion> regions{{"West", "Запад"}, {"East"}, {""}};
  const auto at = [&](const std::vector<MadePlace>& places, const GeoPoint& point) {
    const auto gazetteer = gazetteerOf(madeTable(places, regions, borderAt(120)));
    const auto place = gazetteer.resolve(point, "ru_RU");
    return std::pair{place->region.value_or(""), place->countryCode.value_or("")};
  };
  using Area = std::pair<std::string, std::string>;
  /// The area at a point that three villages of a region surround, with further places.
  const auto inRegion = [&](std::uint16_t region, std::vector<MadePlace> places = {}) {
    places.push_back({"North", off(30), 1000, "AA", region});
    places.push_back({"East", off(-20, 30), 1000, "AA", region});
    places.push_back({"West", off(-20, -30), 1000, "AA", region});
    return at(places, off(0));
  };
  EXPECT_EQ(inRegion(1), Area("Запад", "AA"));
  const std::string land = countryName("AA", "ru").value_or("");
  const Area country{land, "AA"};
  EXPECT_EQ(inRegion(2), country) << "no English name inside a Russian one";
  EXPECT_EQ(inRegion(1, {{"Near", off(45), 1000, "AA", 2}}), country);
  EXPECT_EQ(inRegion(1, {{"Far", off(52), 1000, "AA", 2}}), Area("Запад", "AA"));
  EXPECT_EQ(inRegion(2, {{"Here", off(3), 1000, "AA", 2, 0, false, "Здесь"}}), Area("", "AA"))
      << "a city instead";
  for (const std::uint16_t unnamed : std::initializer_list<std::uint16_t>{0, 3, 4}) {
    EXPECT_EQ(inRegion(unnamed), country);
  }
  EXPECT_EQ(at({{"South", off(-30)}, {"East", off(-1, 30)}, {"West", off(-1, -30)}}, off(0)),
            country)
      << "not on all sides";
  EXPECT_EQ(at({{"Village", off(79)}}, off(0)), country);
  EXPECT_EQ(inRegion(1, {{"Abroad", off(45), 1000, "BB", 2}}), Area("Запад", "AA"));
  EXPECT_EQ(at({{"Village", off(-399)}}, off(0)), country) << "the country alone";
  EXPECT_EQ(at({{"Village", off(-401)}}, off(0)), Area("", "")) << "too far";
  EXPECT_EQ(at({{"Village", off(100)}}, off(130)), Area("", "")) << "nothing of that country";
  const GeocodedPlace place{{}, {}, "Land", "AA", "Region"};
  EXPECT_EQ(place.names(true).cityOrRegion(), "Region");
}

TEST(Gazetteer, areaOfARegion_decidesWhereThereAreNoTowns) {
  const std::vector<MadeRegion> regions{
      {"West", "Запад"}, {"East", "Восток"}, {"Abroad", "", "BB"}};
  /// One row of cells: the west, a gap of one cell, the east, and the neighbouring country.
  const std::vector<MadeRun> runs{{50.01, 10.01, 1},
                                  {50.01, 10.51, 0},
                                  {50.01, 10.53, 2},
                                  {50.01, 11.01, 3},
                                  {50.01, 12.01, 0}};
  const std::vector<MadeArea> land{{"AA", {{45, 5}, {45, 15}, {55, 15}, {55, 5}}}};
  const auto gazetteer = gazetteerOf(madeTable(
      {{"Far", {46, 6}, 1000, "AA", 2}, {"There", {57, 6}, 1000, "BB", 3}}, regions, land, runs));
  const auto regionAt = [&](double latitude, double longitude) {
    return gazetteer.resolve({latitude, longitude}, "ru")->region.value_or("");
  };
  const std::string country = countryName("AA", "ru").value_or("");
  EXPECT_EQ(regionAt(50.01, 10.01), "Запад");
  EXPECT_EQ(regionAt(50.01, 10.49), "Запад");
  EXPECT_EQ(regionAt(50.01, 10.53), "Восток");
  EXPECT_EQ(regionAt(50.01, 9.9), "Запад") << "a cell of water on the coast";
  EXPECT_EQ(regionAt(50.2, 10.2), "Запад");
  EXPECT_EQ(regionAt(50.23, 10.2), country) << "too far from every cell";
  EXPECT_EQ(regionAt(50.01, 11.5), country) << "the area of a region of another country";
}

TEST(Gazetteer, cityOnTheOtherShore_isOfAnotherRegion) {
  const std::vector<MadeRegion> regions{{"Here"}, {"There"}};
  const auto nameAt = [&](const std::vector<MadeRun>& runs, const GeoPoint& point) {
    const auto gazetteer = gazetteerOf(madeTable(
        {{"Village", {10.04, 10}, 3000, "AA", 1}, {"Metropolis", {10, 10.2}, 9'000'000, "AA", 2}},
        regions, {}, runs));
    return gazetteer.resolve(point, "en")->city.value_or("");
  };
  std::vector<MadeRun> shores;
  for (const double row : {9.97, 9.99, 10.01, 10.03}) {
    shores.insert(shores.end(), {{row, 9.91, 1}, {row, 10.09, 2}, {row, 10.31, 0}});
  }
  EXPECT_EQ(nameAt({}, {10, 10}), "Metropolis");
  EXPECT_EQ(nameAt(shores, {10, 10}), "Village");
  EXPECT_EQ(nameAt(shores, {10, 10.08}), "Metropolis") << "at the border the areas are too rough";
  EXPECT_EQ(nameAt(shores, {10, 10.15}), "Metropolis");
}

TEST(Gazetteer, russianName_isThatOfTheRegionOrCountryIfTheCityHasNone) {
  const auto gazetteer =
      gazetteerOf(madeTable({{"Pine Valley", {32.8, -116.5}, 1500, "US", 1},
                             {"Elsewhere", {40, -116.5}, 1500, "US", 2},
                             {"Reno", {39, -110}, 1500, "US", 1, 0, false, "Рино"}},
                            {{"California", "Калифорния"}, {"Nevada"}}));
  const auto nameAt = [&](const GeoPoint& point, const char* locale) {
    return *gazetteer.resolve(point, locale)->names(false).cityOrRegion();
  };
  EXPECT_EQ(nameAt({32.8, -116.5}, "ru_RU"), "Калифорния");
  EXPECT_EQ(nameAt({32.8, -116.5}, "en_US"), "Pine Valley");
  EXPECT_EQ(nameAt({40, -116.5}, "ru_RU"), "США") << "neither has one";
  EXPECT_EQ(nameAt({39, -110}, "ru_RU"), "Рино");
}

TEST(Gazetteer, names_areRussianOrEnglish) {
  const auto gazetteer =
      gazetteerOf(madeTable({{"Rome", {41.9, 12.5}, 2'000'000, "IT", 1, 0, true, "Рим"},
                             {"Nowhere", {0, 0}, 1000, "IT"}}));
  const GeoPoint rome{41.9, 12.5};
  EXPECT_EQ(gazetteer.resolve(rome, "ru_RU")->names(false),
            (PlaceNames{"Рим", "Италия", "IT", {}, "city 0"}));
  EXPECT_EQ(gazetteer.resolve(rome, "en_US")->names(false),
            (PlaceNames{"Rome", "Italy", "IT", {}, "city 0"}));
  EXPECT_EQ(gazetteer.resolve(rome, "de_DE")->names(false),
            (PlaceNames{"Rome", "Italien", "IT", {}, "city 0"}));
  EXPECT_EQ(gazetteer.resolve({0, 0}, "ru")->names(false),
            (PlaceNames{{}, "Италия", "IT", "Италия"}));
}

TEST(Gazetteer, district_isTheNearestQuarterIfItIsSure) {
  const auto quarter = [](const char* name, const GeoPoint& point, const char* russianName = "") {
    MadePlace part = partOf("Metropolis", point);
    part.name = name;
    part.russianName = russianName;
    return part;
  };
  MadePlace village = quarter("Village", off(-9));
  village.population = 1000;
  const auto gazetteer = gazetteerOf(madeTable({metropolis,
                                                quarter("Old Town", off(3), "Старый город"),
                                                quarter("Harbour", off(4.5)),
                                                quarter("Harbour", off(5.5)),
                                                partOf("Metropolis", off(-3)),
                                                village,
                                                quarter("East", off(0, 20)),
                                                quarter("A", off(2, 19)),
                                                quarter("B", off(-2, 19)),
                                                quarter("C", off(1.5, 17.6)),
                                                quarter("West", off(0, -20)),
                                                quarter("D", off(2, -19)),
                                                quarter("E", off(-2, -19)),
                                                {"Town", off(40), 5000}}));
  const auto at = [&](const GeoPoint& point, const char* locale = "en_US") {
    const auto district = gazetteer.districtAt(point, locale);
    return district ? district->name : "";
  };
  EXPECT_EQ(at(off(3)), "Old Town");
  EXPECT_EQ(at(off(2.5)), "Old Town");
  EXPECT_EQ(at(off(2)), "") << "too far from every quarter";
  EXPECT_EQ(at(off(3.65)), "") << "between two quarters";
  EXPECT_EQ(at(off(5)), "Harbour") << "two points of one quarter";
  EXPECT_EQ(gazetteer.districtAt(off(4.5), "en")->number,
            gazetteer.districtAt(off(5.5), "en")->number);
  EXPECT_EQ(at(off(-3)), "") << "a part without a name";
  EXPECT_EQ(at(off(-9.3)), "Village");
  EXPECT_EQ(at(off(-9.5)), "") << "a smaller quarter";
  EXPECT_EQ(at(off(0, 19)), "East");
  EXPECT_EQ(at(off(0, -19)), "") << "where few quarters are known, others may be missing";
  EXPECT_EQ(at(off(40)), "") << "a town is no quarter";
  EXPECT_EQ(at(off(3), "ru_RU"), "Старый город");
  EXPECT_EQ(at(off(5), "ru_RU"), "") << "no English name inside a Russian one";
  EXPECT_EQ(at({std::nan(""), 0}), "");
  const auto city = gazetteer.resolve(off(3), "en");
  EXPECT_EQ(gazetteer.districtAt(off(3), "en")->cityNumber, city->cityNumber);
}

TEST(Gazetteer, zone_isThatOfTheNearestPlaceOnThisSide) {
  const auto gazetteer = gazetteerOf(
      madeTable({{.name = "West", .point = {0, 0}, .region = 1, .zone = "Zone/West"},
                 {.name = "East", .point = {0, 1}, .region = 2, .zone = "Zone/East"},
                 {.name = "Zoneless", .point = {0, 0.7}, .region = 1},
                 {.name = "Abroad", .point = {-0.1, 0}, .country = "BB", .zone = "Zone/Abroad"}},
                {{"One"}, {"Two"}}, {{"AA", {{0, -1}, {0, 9}, {5, 9}, {5, -1}}}},
                {{0.21, -0.5, 1}, {0.21, 0.75, 2}, {0.21, 5, 0}}));
  EXPECT_EQ(gazetteer.zoneIDAt({0.1, 0.4}), "Zone/West");
  EXPECT_EQ(gazetteer.zoneIDAt({0.1, 0.6}), "Zone/East");
  EXPECT_EQ(gazetteer.zoneIDAt({0.01, 0}), "Zone/West") << "at a border";
  EXPECT_EQ(gazetteer.zoneIDAt({-0.1, 0.04}), "Zone/Abroad") << "in no country";
  EXPECT_EQ(gazetteer.zoneIDAt({0.21, 0.7}), "Zone/West") << "in its region";
  EXPECT_EQ(gazetteer.zoneIDAt({0.21, 4}), "Zone/East") << "in open country";
  EXPECT_EQ(gazetteer.zoneIDAt({40, 40}), std::nullopt);
  EXPECT_EQ(gazetteer.zoneIDAt({0, std::nan("")}), std::nullopt);
}

TEST(GeocodedZones, realPlaces_haveTheirTime) {
  const auto directory = std::make_shared<PlaceDirectory>(
      Gazetteer::open(TAVRIX_RESOURCES "/gazetteer.bin"), GeocodingCache{"none", {}});
  const GeocodedZones zones{directory};
  struct Row {
    const char* place;
    GeoPoint point;
    const char* zone;  ///< of the same offset
  };
  const std::vector<Row> rows{
      {"Taipei", {25.034, 121.564}, "Asia/Taipei"},
      {"Narva, Estonia", {59.375, 28.199}, "Europe/Tallinn"},
      {"Ivangorod, across the river", {59.3735, 28.2125}, "Europe/Moscow"},
      {"Kaliningrad", {54.71, 20.51}, "Europe/Kaliningrad"},
      {"Grand Canyon, without summer time", {36.06, -112.11}, "America/Phoenix"},
      {"Kathmandu", {27.70, 85.32}, "Asia/Kathmandu"},
      {"Canary Islands", {28.29, -16.63}, "Atlantic/Canary"},
      {"Azores", {37.75, -25.67}, "Atlantic/Azores"},
      {"Uluru", {-25.345, 131.036}, "Australia/Darwin"},
      {"Lake Baikal, Olkhon", {53.16, 107.34}, "Asia/Irkutsk"},
      {"Pensacola, Florida", {30.42, -87.21}, "America/Chicago"},
      {"Auckland, at the bay", {-36.80, 174.85}, "Pacific/Auckland"}};
  for (const Row& row : rows) {
    const auto zone = zones.zoneAt(row.point);
    ASSERT_TRUE(zone) << row.place;
    for (const char* day : {"2026-01-15T12:00:00Z", "2026-07-15T12:00:00Z"}) {
      const Instant moment = *parseIso8601(day);
      EXPECT_EQ(zone->toLocal(moment), TimeZone::load(row.zone)->toLocal(moment)) << row.place;
    }
  }
  EXPECT_EQ(zones.zoneAt({-45, -130}), std::nullopt) << "the high seas";
  EXPECT_EQ(zones.zoneAt({95, 0}), std::nullopt);
}

TEST(Gazetteer, oddPoints_haveNoName) {
  const auto gazetteer = gazetteerOf(madeTable({metropolis}));
  const double none = std::numeric_limits<double>::quiet_NaN();
  const double infinite = std::numeric_limits<double>::infinity();
  for (const GeoPoint& point :
       {GeoPoint{none, 0}, GeoPoint{0, none}, GeoPoint{infinite, 0}, GeoPoint{0, -infinite}}) {
    EXPECT_EQ(gazetteer.resolve(point, "en"), GeocodedPlace{});
  }
  EXPECT_EQ(gazetteer.resolve({10, 380}, "en")->city, "Metropolis") << "once around";
  EXPECT_EQ(gazetteerOf(madeTable({})).resolve({0, 0}, "en"), GeocodedPlace{});
}

TEST(Gazetteer, damage_isRefusedWithItsPlace) {
  using Kind = GazetteerError::Kind;
  const std::string whole = madeTable({metropolis, {"Village", off(12)}});
  const auto changed = [&](std::size_t at, char byte) {
    std::string bytes = whole;
    bytes.at(at) = byte;
    return bytes;
  };
  struct Damage {
    std::string bytes;
    Kind kind;
    std::size_t offset;
  };
  const std::size_t bandsAt = 56;
  const std::vector<Damage> rows{
      {"", Kind::notGazetteer, 0},
      {changed(0, 'X'), Kind::notGazetteer, 0},
      {whole.substr(0, 20), Kind::wrongSize, 20},
      {changed(8, 1), Kind::otherVersion, 8},
      {changed(15, 0x7F), Kind::wrongSize, 12},
      {changed(27, 0x7F), Kind::wrongSize, 24},
      {changed(31, 0x7F), Kind::wrongSize, 28},
      {changed(35, 0x7F), Kind::wrongSize, 32},
      {changed(39, 0x7F), Kind::wrongSize, 36},
      {changed(43, 0x7F), Kind::wrongSize, 40},
      {changed(32, 1), Kind::wrongSize, whole.size()},
      {changed(24, 1), Kind::wrongSize, whole.size()},
      {whole + "x", Kind::wrongSize, whole.size() + 1},
      {whole.substr(0, whole.size() - 1), Kind::wrongSize, whole.size() - 1},
      {changed(bandsAt, 9), Kind::wrongOrder, bandsAt},
      {changed(bandsAt + 4, 1), Kind::wrongOrder, bandsAt + 8},
      {changed(16, 2), Kind::wrongOrder, bandsAt + 720 * 4},
      {changed(bandsAt + 2 * 721 * 4, 1), Kind::wrongOrder, bandsAt + 2 * 721 * 4},
  };
  for (const Damage& row : rows) {
    try {
      gazetteerOf(row.bytes);
      ADD_FAILURE() << "taken: " << row.offset;
    } catch (const GazetteerError& error) {
      EXPECT_EQ(error.kind(), row.kind) << row.offset;
      EXPECT_EQ(error.offset(), row.offset);
    }
  }
  EXPECT_THROW(Gazetteer::open("missing.bin"), FileError);
  EXPECT_THROW(Gazetteer::open("."), FileError);
}

std::string bytesInPage() {
  std::ifstream page{std::string{TAVRIX_DOCS} + "/gazetteer.md"};
  std::string bytes;
  bool isInside = false;
  for (std::string line; std::getline(page, line);) {
    if (line == "```") isInside = !isInside;
    if (!isInside || line == "```") continue;
    const auto times = line.find(" × ");
    std::istringstream numbers{line.substr(0, times)};
    std::string part;
    for (std::string number; numbers >> number;) {
      part += static_cast<char>(std::stoi(number, nullptr, 16));
    }
    const int count = times == std::string::npos ? 1 : std::stoi(line.substr(times + 4));
    for (int i = 0; i < count; ++i) bytes += part;
  }
  return bytes;
}

TEST(Gazetteer, exampleOfTheDescription_isATable) {
  const auto gazetteer = gazetteerOf(bytesInPage());
  EXPECT_EQ(gazetteer.source(), "gazetteer 20200318.7");
  ASSERT_EQ(gazetteer.table().size(), 1U);
  const GazetteerPlace place = gazetteer.table().at(0);
  EXPECT_EQ(place.point, (GeoPoint{43.73485, 7.41673}));
  EXPECT_EQ(place.population, 32965U);
  EXPECT_EQ(place.name, "Monaco");
  EXPECT_EQ(place.russianName, "Монако");
  EXPECT_EQ(place.country, "MC");
  EXPECT_EQ(gazetteer.table().regionAt(place.region).name, "Monaco");
  EXPECT_EQ(gazetteer.table().regionAt(place.region).russianName, "");
  EXPECT_EQ(gazetteer.zoneIDAt(place.point), "Europe/Monaco");
  EXPECT_TRUE(place.isCapital);
  EXPECT_FALSE(place.isTranscribed);
}

/// Returns the same city as cityAt(), by checking every place.
std::optional<CityChoice::Choice> bestOfAll(const GazetteerTable& table, const GeoPoint& point) {
  const auto country = table.borders().countryAt(point);
  std::vector<std::tuple<std::size_t, double, bool>> reaching;  ///< city, score, is a part
  std::uint16_t region = 0;
  double least = 1e9;
  for (std::size_t i = 0; i < table.size(); ++i) {
    // No city reaches farther than one degree of latitude.
    if (std::abs(table.pointAt(i).latitude - point.latitude) > 1) continue;
    const double distance = haversineDistanceKm(point, table.pointAt(i));
    const std::uint32_t population = table.populationAt(i);
    if (distance > CityChoice::reachKm(population)) continue;
    if (!CityChoice::isSameSide(table, i, country)) continue;
    const std::size_t city = table.cityAt(i).value();
    reaching.emplace_back(city, CityChoice::score(distance, population), city != i);
    if (distance < least) least = distance, region = table.regionNumberAt(city);
  }
  std::optional<CityChoice::Choice> best;
  for (auto [city, score, isPart] : reaching) {
    score += CityChoice::regionScore(table, city, score, isPart,
                                     {region, CityChoice::regionAllAround(table, point)});
    if (!best || score < best->score) best = {city, score};
  }
  return best;
}

TEST(Gazetteer, search_findsWhatLookingAtEveryPlaceFinds) {
  if (hasThreadSanitizer) {
    GTEST_SKIP() << "Many looks at every place take minutes here, and no thread is in it.";
  }
  const auto gazetteer = Gazetteer::open(TAVRIX_RESOURCES "/gazetteer.bin");
  const GazetteerTable& table = gazetteer->table();
  std::mt19937 random{20261121};
  std::uniform_int_distribution<std::size_t> anyPlace{0, table.size() - 1};
  std::normal_distribution<double> shift{0, 0.2};
  int found = 0;
  for (int i = 0; i < 400; ++i) {
    GeoPoint point = table.pointAt(anyPlace(random));
    point.latitude = std::clamp(point.latitude + shift(random), -90.0, 90.0);
    point.longitude += shift(random) / std::max(0.05, std::cos(point.latitude * pi / 180));
    const auto best = bestOfAll(table, point);
    EXPECT_EQ(CityChoice::cityAt(table, point), best) << point.latitude << ' ' << point.longitude;
    if (best) ++found;
  }
  EXPECT_GT(found, 200);
}

TEST(Borders, pointsLieInTheAreaAroundThem) {
  const auto gazetteer =
      gazetteerOf(madeTable({{"A", {0, 0}}}, {},
                            {{"AA", {{0, 0}, {0, 10}, {10, 10}, {10, 0}}},
                             {"AA", {{4, 4}, {4, 6}, {6, 6}, {6, 4}}},
                             {"BB", {{4, 4}, {4, 6}, {6, 6}, {6, 4}}},
                             {"CC", {{-10, 170}, {-10, 180}, {10, 180}, {10, 170}}}}));
  const GazetteerTable& table = gazetteer.table();
  const auto at = [&](const GeoPoint& point) {
    const auto country = table.borders().countryAt(point);
    return country ? table.country(*country) : "";
  };
  EXPECT_EQ(at({1, 1}), "AA");
  EXPECT_EQ(at({5, 5}), "BB") << "an enclave";
  EXPECT_EQ(at({5, 7}), "AA");
  EXPECT_EQ(at({5, 367}), "AA") << "once around";
  EXPECT_EQ(at({5, -1}), "");
  EXPECT_EQ(at({11, 5}), "");
  EXPECT_EQ(at({0, 179.9}), "CC");
  EXPECT_EQ(at({0, -179.9}), "");
  EXPECT_TRUE(table.borders().areWithin({5, 7}, 112));
  EXPECT_FALSE(table.borders().areWithin({5, 7.1}, 111));
  EXPECT_TRUE(table.borders().areWithin({0, -179.9}, 12)) << "over the date line";
  EXPECT_EQ(Borders{}.countryAt({1, 1}), std::nullopt);
  EXPECT_FALSE(Borders{}.areWithin({1, 1}, 1000));
}

TEST(PlaceCells, clusterAcrossABorder_isACellOnEachSideOfIt) {
  const auto gazetteer = gazetteerOf(
      madeTable({{"Here", off(-1), 5000}, {"There", off(1), 90'000, "BB"}}, {}, borderAt(0.1)));
  const PlaceCells cells{{off(-0.4), off(0.5), off(-0.2), off(20)}, 2, gazetteer.borders()};
  const auto cityOf = [&](const GeoPoint& point) {
    const std::string key = cells.keyOf(point);
    EXPECT_THAT(cells.keys(), testing::Contains(key));
    return gazetteer.resolve(PlaceCells::centerOf(key).value(), "en")->city;
  };
  EXPECT_THAT(cells.keys(), testing::SizeIs(3));
  EXPECT_EQ(cells.keyOf(off(-0.4)), cells.keyOf(off(0)));
  EXPECT_EQ(cityOf(off(-0.4)), "Here");
  EXPECT_EQ(cityOf(off(0.2)), "There");
  const PlaceCells oneSided{{off(0.5)}, 2, gazetteer.borders()};
  EXPECT_EQ(oneSided.keyOf(off(0)), PlaceCells::keyAt(off(0))) << "nobody was on this side";
}

}  // namespace
}  // namespace tavrix
