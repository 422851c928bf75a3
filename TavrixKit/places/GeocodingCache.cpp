#include "places/GeocodingCache.h"

#include <limits>

#include "foundation/files/AtomicFile.h"
#include "foundation/files/FileError.h"
#include "foundation/json/JsonValue.h"
#include "foundation/json/JsonWriter.h"
#include "places/PlaceCells.h"

namespace tavrix {
namespace {

const std::string path{GeocodingCache::fileName};

void writeCells(JsonWriter& json, const GeocodingCache::Cells& cells) {
  json.beginObject();
  std::size_t room = GeocodingCache::largestCellCount;
  for (const auto& [key, place] : cells) {
    if (room-- == 0) break;
    json.key(key).beginObject();
    json.field("city", place.city).field("cityNumber", place.cityNumber);
    json.field("countryCode", place.countryCode).field("countryName", place.countryName);
    json.field("mainCity", place.mainCity).field("mainCityNumber", place.mainCityNumber);
    json.field("region", place.region).field("regionNumber", place.regionNumber).endObject();
  }
  json.endObject();
}

std::optional<std::string> textOf(const JsonValue& object, std::string_view key) {
  const JsonValue* const member = object.member(key);
  if (member == nullptr || member->asString() == nullptr) return std::nullopt;
  return *member->asString();
}

/// Reads a text that may be missing. Returns false if the value is not a text.
bool takeText(const JsonValue& object, std::string_view key, std::optional<std::string>& text) {
  const JsonValue* const member = object.member(key);
  if (member == nullptr) return true;
  if (member->asString() == nullptr) return false;
  text = *member->asString();
  return true;
}

/// Reads a number that may be missing. Returns false if the value is not a number of 32 bits.
bool takeNumber(const JsonValue& object, std::string_view key,
                std::optional<std::uint32_t>& number) {
  const JsonValue* const member = object.member(key);
  if (member == nullptr) return true;
  const auto value = member->asUnsigned();
  if (!value || *value > std::numeric_limits<std::uint32_t>::max()) return false;
  number = static_cast<std::uint32_t>(*value);
  return true;
}

/// Returns nullopt for an invalid value. An empty place would mean that the point has no name.
std::optional<GeocodedPlace> placeOf(const JsonValue& value) {
  if (value.asObject() == nullptr) return std::nullopt;
  GeocodedPlace place;
  const bool fits = takeText(value, "city", place.city) &&
                    takeText(value, "mainCity", place.mainCity) &&
                    takeText(value, "countryName", place.countryName) &&
                    takeText(value, "countryCode", place.countryCode) &&
                    takeText(value, "region", place.region) &&
                    takeNumber(value, "cityNumber", place.cityNumber) &&
                    takeNumber(value, "mainCityNumber", place.mainCityNumber) &&
                    takeNumber(value, "regionNumber", place.regionNumber);
  return fits ? std::optional{std::move(place)} : std::nullopt;
}

GeocodingCache::Cells cellsOf(const JsonValue::Object& object) {
  GeocodingCache::Cells cells;
  for (const auto& [key, value] : object) {
    if (cells.size() == GeocodingCache::largestCellCount) break;
    auto place = PlaceCells::centerOf(key) ? placeOf(value) : std::nullopt;
    if (place) cells.emplace_hint(cells.end(), key, *std::move(place));
  }
  return cells;
}

}  // namespace

std::string cacheLanguage(std::string_view localeID) {
  return std::string{localeID.substr(0, localeID.find_first_of("_-@."))};
}

void GeocodingCache::addMissing(const GeocodingCache& other) {
  if (other.source != source) return;
  for (const auto& [language, cells] : other.languages) {
    if (cells.size() < largestCellCount) languages[language].insert(cells.begin(), cells.end());
  }
}

namespace GeocodingCacheFile {

std::string encode(const GeocodingCache& cache) {
  StringSink sink;
  JsonWriter json{sink};
  json.beginObject().key("languages").beginObject();
  for (const auto& [language, cells] : cache.languages) {
    json.key(language);
    writeCells(json, cells);
  }
  json.endObject().field("source", cache.source);
  json.field("version", GeocodingCache::currentVersion).endObject().finish();
  return sink.text();
}

std::optional<GeocodingCache> decode(std::string_view text) {
  try {
    const JsonValue json = parseJson(text);
    const JsonValue* const version = json.member("version");
    const JsonValue* const languages = json.member("languages");
    const auto source = textOf(json, "source");
    if (version == nullptr || version->asUnsigned() != GeocodingCache::currentVersion ||
        languages == nullptr || languages->asObject() == nullptr || !source) {
      return std::nullopt;
    }
    GeocodingCache cache{*source, {}};
    for (const auto& [language, cells] : *languages->asObject()) {
      if (cells.asObject() != nullptr) cache.languages[language] = cellsOf(*cells.asObject());
    }
    return cache;
  } catch (const JsonError&) {
    return std::nullopt;
  }
}

GeocodingCache load(const Folder& stateFolder, const std::string& source) {
  try {
    if (stateFolder.status(path)) {
      auto cache = decode(stateFolder.readFile(path, GeocodingCache::largestFileBytes));
      if (cache && cache->source == source) return *std::move(cache);
    }
  } catch (const FileError&) {
    // The geocoder can give every answer again.
  }
  return {source, {}};
}

bool save(Folder& stateFolder, GeocodingCache cache) {
  if (!stateFolder.lock()) return false;
  cache.addMissing(load(stateFolder, cache.source));
  writeFileAtomically(stateFolder, path, encode(cache));
  removeLeftOvers(stateFolder, path);
  return true;
}

bool reset(Folder& stateFolder) {
  if (!stateFolder.status(path)) return false;
  stateFolder.removeFile(path);
  return true;
}

}  // namespace GeocodingCacheFile

}  // namespace tavrix
