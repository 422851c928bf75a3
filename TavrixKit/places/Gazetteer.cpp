#include "places/Gazetteer.h"

#include "foundation/Text.h"
#include "foundation/files/MappedFile.h"
#include "places/CityChoice.h"
#include "places/ZoneChoice.h"

namespace tavrix {
namespace {

// Must be incremented whenever the choice among the places changes.
constexpr int choiceVersion = 6;

bool isRussian(const std::string& localeID) {
  return localeID == "ru" || localeID.starts_with("ru_");
}

/// Returns the name of a country. The Russian name of the US is the one that people write.
std::optional<std::string> countryIn(const std::string& code, const std::string& localeID) {
  if (code == "US" && isRussian(localeID)) return "США";
  return countryName(code, localeID);
}

/// Returns the name of a place or region in the language of the locale.
template <typename Named>
std::string nameIn(const Named& place, const std::string& localeID) {
  // The table is external data and may hold ill-formed UTF-8.
  return replacingInvalidUtf8(isRussian(localeID) && !place.russianName.empty() ? place.russianName
                                                                                : place.name);
}

/// Returns true if a Russian text names a place better by its region: only the region has a Russian
/// name.
bool isNamedByRegion(const GazetteerPlace& place, const GazetteerRegion& region,
                     const std::string& localeID) {
  return isRussian(localeID) && place.russianName.empty() && !region.russianName.empty();
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
    const GazetteerRegion region = table_.regionAt(place.region);
    if (isNamedByRegion(place, region, localeID)) {
      result.region = nameIn(region, localeID);
      result.regionNumber = place.region;
    } else {
      result.city = nameIn(place, localeID);
      result.cityNumber = static_cast<std::uint32_t>(city->index);
    }
    if (const auto mainCity = CityChoice::mainCityOf(table_, city->index)) {
      result.mainCity = nameIn(table_.at(*mainCity), localeID);
      result.mainCityNumber = static_cast<std::uint32_t>(*mainCity);
    }
    country = place.country;
  } else {
    const CityChoice::Area area = CityChoice::areaAt(table_, point);
    country = area.country;
    const std::string region = nameIn(table_.regionAt(area.region), localeID);
    if (!region.empty()) {
      result.region = region;
      result.regionNumber = area.region;
    }
  }
  if (!country.empty()) {
    result.countryCode = replacingInvalidUtf8(country);
    result.countryName = countryIn(*result.countryCode, localeID);
    // Nothing inside a border stays without a name.
    if (!result.city && !result.region) result.region = result.countryName;
  }
  return result;
}

std::optional<std::string> Gazetteer::zoneIDAt(const GeoPoint& point) const {
  const std::string_view id = ZoneChoice::zoneIDAt(table_, point);
  return id.empty() ? std::nullopt : std::optional<std::string>{id};
}

}  // namespace tavrix
