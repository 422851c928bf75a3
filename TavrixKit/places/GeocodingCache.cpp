#include "places/GeocodingCache.h"

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
  for (const auto& [key, place] : cells) {
    json.key(key).beginObject();
    json.field("city", place.city).field("countryCode", place.countryCode);
    json.field("countryName", place.countryName).field("mainCity", place.mainCity).endObject();
  }
  json.endObject();
}

std::optional<std::string> textOf(const JsonValue& object, std::string_view key) {
  const JsonValue* const member = object.member(key);
  if (member == nullptr || member->asString() == nullptr) return std::nullopt;
  return *member->asString();
}

GeocodingCache::Cells cellsOf(const JsonValue::Object& object) {
  GeocodingCache::Cells cells;
  for (const auto& [key, value] : object) {
    if (cells.size() == GeocodingCache::largestCellCount) break;
    if (value.asObject() == nullptr || !PlaceCells::centerOf(key)) continue;
    cells.emplace_hint(cells.end(), key,
                       GeocodedPlace{textOf(value, "city"), textOf(value, "mainCity"),
                                     textOf(value, "countryName"), textOf(value, "countryCode")});
  }
  return cells;
}

}  // namespace

std::string cacheLanguage(std::string_view localeID) {
  return std::string{localeID.substr(0, localeID.find_first_of("_-@."))};
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
    // Every answer can be found again.
  }
  return {source, {}};
}

void save(Folder& stateFolder, const GeocodingCache& cache) {
  writeFileAtomically(stateFolder, path, encode(cache));
  removeLeftOvers(stateFolder, path);
}

bool reset(Folder& stateFolder) {
  if (!stateFolder.status(path)) return false;
  stateFolder.removeFile(path);
  return true;
}

}  // namespace GeocodingCacheFile

}  // namespace tavrix
