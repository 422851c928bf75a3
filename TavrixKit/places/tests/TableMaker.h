#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "places/Gazetteer.h"

namespace tavrix {

/// A place of a test table.
struct MadePlace {
  std::string name;
  GeoPoint point;
  std::uint32_t population = 1000;
  std::string country = "AA";
  std::uint16_t region = 1;
  std::uint16_t district = 0;
  bool isCapital = false;
  std::string russianName = "";
  std::string partOf = "";  ///< the name of the city of which the place is a part
  bool isAstray = false;
  std::string zone = "";
  bool isTranscribed = false;
};

/// An area of a country in a test table.
struct MadeArea {
  std::string country;
  std::vector<GeoPoint> ring;
};

/// The names of a region in a test table.
struct MadeRegion {
  std::string name;
  std::string russianName = "";
  std::string country = "AA";
};

/// A run of cells of one region in a test table, in the row of a latitude from a longitude on. Runs
/// are given from south to north and from west to east.
struct MadeRun {
  double latitude;
  double longitude;
  std::uint16_t region;
};

inline void appendNumber(std::string& bytes, std::int64_t number, int size) {
  for (int i = 0; i < size; ++i) {
    bytes += static_cast<char>(static_cast<std::uint64_t>(number) >> (8 * i));
  }
}

inline std::int64_t bandOf(double latitude) {
  return std::min<std::int64_t>(719, std::llround(std::floor((latitude + 90) * 4)));
}
inline std::int64_t bandOf(const MadePlace& place) { return bandOf(place.point.latitude); }

inline void appendPoint(std::string& bytes, const GeoPoint& point) {
  appendNumber(bytes, std::llround(point.latitude * 100'000), 4);
  appendNumber(bytes, std::llround(point.longitude * 100'000), 4);
}

/// Returns the number of a country; adds the code to `countries` if it is missing.
inline std::int64_t countryNumber(std::string& countries, const std::string& code) {
  std::size_t at = 0;
  while (at < countries.size() && countries.substr(at, 2) != code) at += 2;
  if (at == countries.size()) countries += code;
  return static_cast<std::int64_t>(at / 2);
}

/// Returns the bands and the sides of areas.
inline std::pair<std::string, std::string> madeBorders(const std::vector<MadeArea>& areas,
                                                       std::string& countries) {
  std::string starts;
  std::string sides;
  for (std::int64_t band = 0; band < 720; ++band) {
    appendNumber(starts, static_cast<std::int64_t>(sides.size() / 18), 4);
    for (const MadeArea& area : areas) {
      for (std::size_t i = 0; i < area.ring.size(); ++i) {
        GeoPoint south = area.ring[i];
        GeoPoint north = area.ring[(i + 1) % area.ring.size()];
        if (south.latitude > north.latitude) std::swap(south, north);
        if (bandOf(south.latitude) > band || bandOf(north.latitude) < band) continue;
        appendPoint(sides, south);
        appendPoint(sides, north);
        appendNumber(sides, countryNumber(countries, area.country), 2);
      }
    }
  }
  appendNumber(starts, static_cast<std::int64_t>(sides.size() / 18), 4);
  return {starts, sides};
}

/// Returns the bytes of a table. The first region has the number 1.
inline std::string madeTable(std::vector<MadePlace> places,
                             const std::vector<MadeRegion>& regions = {},
                             const std::vector<MadeArea>& areas = {},
                             const std::vector<MadeRun>& runs = {}) {
  const auto isLarge = [](const MadePlace& place) { return place.population >= 100'000; };
  std::stable_sort(places.begin(), places.end(), [&](const MadePlace& a, const MadePlace& b) {
    return std::tuple{!isLarge(a), bandOf(a), a.point.longitude} <
           std::tuple{!isLarge(b), bandOf(b), b.point.longitude};
  });
  const auto large = std::count_if(places.begin(), places.end(), isLarge);
  std::string countries;
  std::string names;
  std::string records;
  const auto addName = [&](std::string& offsets, const std::string& name) {
    appendNumber(offsets, name.empty() ? -1 : static_cast<std::int64_t>(names.size()), 4);
    if (!name.empty()) names += static_cast<char>(name.size()) + name;
  };
  std::string districts;
  std::vector<std::pair<std::string, std::string>> known;
  const auto districtNumber = [&](const MadePlace& part) {
    const std::pair key{part.partOf, part.name};
    const auto found = std::find(known.begin(), known.end(), key);
    if (found != known.end()) return found - known.begin() + 1;
    known.push_back(key);
    addName(districts, part.name);
    addName(districts, part.russianName);
    return static_cast<std::ptrdiff_t>(known.size());
  };
  for (const MadePlace& place : places) {
    appendPoint(records, place.point);
    appendNumber(records, place.population, 4);
    if (place.partOf.empty()) {
      addName(records, place.name);
      addName(records, place.russianName);
    } else {
      appendNumber(records,
                   std::find_if(places.begin(), places.end(),
                                [&](const MadePlace& each) { return each.name == place.partOf; }) -
                       places.begin(),
                   4);
      appendNumber(records, place.name.empty() ? 0 : districtNumber(place), 4);
    }
    appendNumber(records, place.region, 2);
    appendNumber(records, place.district, 2);
    appendNumber(records, countryNumber(countries, place.country), 1);
    appendNumber(records,
                 (place.isCapital ? 1 : 0) + (place.partOf.empty() ? 0 : 2) +
                     (place.isAstray ? 4 : 0) + (place.isTranscribed ? 8 : 0),
                 1);
    // Every place has a zone of its own.
    appendNumber(records, &place - places.data() + 1, 2);
  }
  const auto [borderStarts, sides] = madeBorders(areas, countries);
  std::string regionRecords;
  for (const MadeRegion& region : regions) {
    addName(regionRecords, region.name);
    addName(regionRecords, region.russianName);
    appendNumber(regionRecords, countryNumber(countries, region.country), 4);
  }
  std::string zones;
  for (const MadePlace& place : places) addName(zones, place.zone);
  std::string bytes = "TAVRXGEO";
  for (const std::size_t number :
       {std::size_t{6}, places.size(), static_cast<std::size_t>(large), countries.size() / 2,
        regions.size(), places.size(), known.size(), sides.size() / 18, runs.size(), names.size(),
        std::size_t{20260101}}) {
    appendNumber(bytes, static_cast<std::int64_t>(number), 4);
  }
  bytes += countries + std::string((4 - countries.size() % 4) % 4, '\0');
  for (const bool wantsLarge : {true, false}) {
    for (std::int64_t band = 0; band <= 720; ++band) {
      appendNumber(bytes,
                   (wantsLarge ? 0 : large) + std::count_if(places.begin(), places.end(),
                                                            [&](const MadePlace& place) {
                                                              return isLarge(place) == wantsLarge &&
                                                                     bandOf(place) < band;
                                                            }),
                   4);
    }
  }
  bytes += borderStarts + regionRecords + zones + districts + records + sides;
  const auto rowOf = [](const MadeRun& run) {
    return std::llround(std::floor((run.latitude + 90) * RegionGrid::cellsPerDegree));
  };
  for (std::int64_t row = 0; row <= std::int64_t{RegionGrid::rowCount}; ++row) {
    appendNumber(bytes,
                 std::count_if(runs.begin(), runs.end(),
                               [&](const MadeRun& run) { return rowOf(run) < row; }),
                 4);
  }
  for (const MadeRun& run : runs) {
    appendNumber(bytes,
                 std::llround(std::floor((run.longitude + 180) * RegionGrid::cellsPerDegree)), 2);
    appendNumber(bytes, run.region, 2);
  }
  return bytes + names;
}

inline Gazetteer gazetteerOf(const std::string& bytes) {
  const auto owner = std::make_shared<const std::string>(bytes);
  return Gazetteer{std::as_bytes(std::span{*owner}), owner};
}

}  // namespace tavrix
