#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "places/Gazetteer.h"

namespace tavrix {

/// A place for a table of a test.
struct MadePlace {
  std::string name;
  GeoPoint point;
  std::uint32_t population = 1000;
  std::string country = "AA";
  std::uint16_t region = 1;
  std::uint16_t district = 0;
  bool isCapital = false;
  std::string russianName = "";
};

/// The names of a region for a table of a test.
struct MadeRegion {
  std::string name;
  std::string russianName = "";
};

inline void appendNumber(std::string& bytes, std::int64_t number, int size) {
  for (int i = 0; i < size; ++i) {
    bytes += static_cast<char>(static_cast<std::uint64_t>(number) >> (8 * i));
  }
}

inline std::int64_t bandOf(const MadePlace& place) {
  return std::min<std::int64_t>(719, std::llround(std::floor((place.point.latitude + 90) * 4)));
}

/// The bytes of a table; the first region has the number 1.
inline std::string madeTable(std::vector<MadePlace> places,
                             const std::vector<MadeRegion>& regions = {}) {
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
  for (const MadePlace& place : places) {
    appendNumber(records, std::llround(place.point.latitude * 100'000), 4);
    appendNumber(records, std::llround(place.point.longitude * 100'000), 4);
    appendNumber(records, place.population, 4);
    addName(records, place.name);
    addName(records, place.russianName);
    appendNumber(records, place.region, 2);
    appendNumber(records, place.district, 2);
    appendNumber(records, static_cast<std::int64_t>(countries.size() / 2), 1);
    appendNumber(records, place.isCapital ? 1 : 0, 1);
    countries += place.country;
  }
  std::string regionRecords;
  for (const MadeRegion& region : regions) {
    addName(regionRecords, region.name);
    addName(regionRecords, region.russianName);
  }
  std::string bytes = "TAVRXGEO";
  for (const std::size_t number :
       {std::size_t{2}, places.size(), static_cast<std::size_t>(large), places.size(),
        regions.size(), names.size(), std::size_t{20260101}}) {
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
  return bytes + regionRecords + records + names;
}

inline Gazetteer gazetteerOf(const std::string& bytes) {
  const auto owner = std::make_shared<const std::string>(bytes);
  return Gazetteer{std::as_bytes(std::span{*owner}), owner};
}

}  // namespace tavrix
