#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "foundation/files/Folder.h"
#include "places/Geocoder.h"

namespace tavrix {

/// The answers of a geocoder by language and place cell. docs/geocache.md describes the file.
struct GeocodingCache {
  using Cells = std::map<std::string, GeocodedPlace, std::less<>>;  ///< by place key

  static constexpr std::string_view fileName = "geocache.json";
  static constexpr std::int64_t currentVersion = 1;
  /// The greatest number of cells of one language in the file. A cell takes about 150 bytes.
  static constexpr std::size_t largestCellCount = 100'000;
  static constexpr std::uint64_t largestFileBytes = 64'000'000;

  std::string source;  ///< the source() of the geocoder that gave the answers
  /// The cells by language, the first part of a locale: "ru", "en".
  std::map<std::string, Cells, std::less<>> languages;

  /// Copies the cells that this cache lacks from another cache of the same source. Skips languages
  /// that are full in the other cache.
  void addMissing(const GeocodingCache& other);

  friend bool operator==(const GeocodingCache&, const GeocodingCache&) = default;
};

/// Returns the language under which the answers for a locale are stored: "ru" for "ru_RU".
std::string cacheLanguage(std::string_view localeID);

namespace GeocodingCacheFile {

std::string encode(const GeocodingCache& cache);
/// Returns nullopt if the text is not a cache of this version. Omits invalid cells and cells beyond
/// the limit.
std::optional<GeocodingCache> decode(std::string_view text);

/// Returns the cache in a state folder if its answers come from `source`, otherwise an empty cache
/// of that source. A file that cannot be read is treated as absent.
GeocodingCache load(const Folder& stateFolder, const std::string& source);
/// Replaces the whole file, but keeps the cells that another process has added to it meanwhile. If
/// another process has locked the folder, returns false and writes nothing. Throws FileError.
bool save(Folder& stateFolder, GeocodingCache cache);
/// Removes the file. Returns false if there was none. Throws FileError.
bool reset(Folder& stateFolder);

}  // namespace GeocodingCacheFile

}  // namespace tavrix
