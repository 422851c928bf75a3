#include "places/Gazetteer.h"

#include <utility>

#include "foundation/Text.h"
#include "foundation/files/MappedFile.h"
#include "places/CityChoice.h"
#include "places/DistrictChoice.h"
#include "places/ZoneChoice.h"

namespace tavrix {
namespace {

// Must be incremented whenever the choice among the places changes.
constexpr int choiceVersion = 7;

bool isRussian(const std::string& localeID) {
  return localeID == "ru" || localeID.starts_with("ru_");
}

/// Returns the name of a country. The Russian name of the US is the one that people write.
std::optional<std::string> countryIn(const std::string& code, const std::string& localeID) {
  if (code == "US" && isRussian(localeID)) return "США";
  return countryName(code, localeID);
}

/// Returns the name of a place, region or quarter in the language of the locale. Empty if it has
/// none: an English name would be unreadable inside a Russian one.
template <typename Named>
std::string nameIn(const Named& place, const std::string& localeID) {
  // The table is external data and may hold ill-formed UTF-8.
  return replacingInvalidUtf8(isRussian(localeID) ? place.russianName : place.name);
}

/// Names the result by a region if it has a name.
void nameByRegion(GeocodedPlace& result, const GazetteerTable& table, std::uint16_t number,
                  const std::string& localeID) {
  const std::string name = nameIn(table.regionAt(number), localeID);
  if (name.empty()) return;
  result.region = name;
  result.regionNumber = number;
}

}  // namespace

std::unique_ptr<Gazetteer> Gazetteer::open(const std::string& path) {
  auto file = std::make_shared<const MappedFile>(path);
  const auto bytes = file->bytes();
  return std::make_unique<Gazetteer>(bytes, std::move(file));
}

std::string Gazetteer::source() const {
  return "gazetteer " + std::to_string(table_.dataDate()) + "." + std::to_string(choiceVersion);
}

std::optional<GeocodedPlace> Gazetteer::resolve(const GeoPoint& point,
                                                const std::string& localeID) const {
  GeocodedPlace result;
  std::string_view country;
  if (const auto city = CityChoice::cityAt(table_, point)) {
    const GazetteerPlace place = table_.at(city->index);
    const std::string name = nameIn(place, localeID);
    if (name.empty()) {
      nameByRegion(result, table_, place.region, localeID);
    } else {
      result.city = name;
      result.cityNumber = static_cast<std::uint32_t>(city->index);
    }
    if (const auto mainCity = CityChoice::mainCityOf(table_, city->index)) {
      const std::string mainName = nameIn(table_.at(*mainCity), localeID);
      if (!mainName.empty()) {
        result.mainCity = mainName;
        result.mainCityNumber = static_cast<std::uint32_t>(*mainCity);
      }
    }
    country = place.country;
  } else {
    const CityChoice::Area area = CityChoice::areaAt(table_, point);
    country = area.country;
    nameByRegion(result, table_, area.region, localeID);
  }
  if (!country.empty()) {
    result.countryCode = replacingInvalidUtf8(country);
    result.countryName = countryIn(*result.countryCode, localeID);
    // Nothing inside a border stays without a name.
    if (!result.city && !result.region) result.region = result.countryName;
  }
  return result;
}

std::optional<GeocodedDistrict> Gazetteer::districtAt(const GeoPoint& point,
                                                      const std::string& localeID) const {
  const auto part = DistrictChoice::districtAt(table_, point);
  const auto city = part ? table_.cityAt(*part) : std::nullopt;
  if (!city) return std::nullopt;
  const GazetteerDistrict district = table_.districtAt(*part);
  std::string name = nameIn(district, localeID);
  if (name.empty()) return std::nullopt;
  return GeocodedDistrict{std::move(name), district.number, static_cast<std::uint32_t>(*city)};
}

std::optional<std::string> Gazetteer::zoneIDAt(const GeoPoint& point) const {
  const std::string_view id = ZoneChoice::zoneIDAt(table_, point);
  return id.empty() ? std::nullopt : std::optional<std::string>{id};
}

}  // namespace tavrix
