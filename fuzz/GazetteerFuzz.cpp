// Reads arbitrary bytes as a gazetteer. If it opens, every place and point must be answered without
// reading out of bounds; otherwise GazetteerError must be thrown.

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "places/CityChoice.h"
#include "places/Gazetteer.h"

using namespace tavrix;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::span bytes{reinterpret_cast<const std::byte*>(data), size};
  try {
    const Gazetteer gazetteer{bytes, nullptr};
    const GazetteerTable& table = gazetteer.table();
    for (std::size_t i = 0; i < std::min<std::size_t>(table.size(), 20); ++i) {
      const GazetteerPlace place = table.at(i);
      if (place.name.size() > size || place.country.size() > 2) std::abort();
      gazetteer.resolve(place.point, "ru_RU");
      const auto district = gazetteer.districtAt(place.point, "en_US");
      if (district && district->cityNumber >= table.size()) std::abort();
    }
    for (const GeoPoint& point : {GeoPoint{0, 0}, {90, 0}, {-90, 180}, {43.7, 7.4}, {5, -180}}) {
      const auto place = gazetteer.resolve(point, "en_US");
      table.borders().areWithin(point, 50);
      const auto city = CityChoice::cityAt(table, point);
      if (place->city.has_value() != city.has_value()) std::abort();
      if (city && city->index >= table.size()) std::abort();
    }
  } catch (const GazetteerError& error) {
    if (error.offset() > size) std::abort();
  }
  return 0;
}
