#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "foundation/files/Folder.h"
#include "places/Geocoder.h"

namespace tavrix {

/// Answers of a geocoder by language and place cell. The form of its file: docs/geocache.md.
struct GeocodingCache {
  using Cells = std::map<std::string, GeocodedPlace, std::less<>>;  ///< by place key

  static constexpr std::string_view fileName = "geocache.json";
  static constexpr std::int64_t currentVersion = 1;
  /// No more cells of a language are written; a cell is some 150 bytes in the file.
  static constexpr std::size_t largestCellCount = 100'000;
  static constexpr std::uint64_t largestFileBytes = 64'000'000;

  std::string source;  ///< that of the geocoder that gave the answers
  /// By the first part of a locale: "ru", "en".
  std::map<std::string, Cells, std::less<>> languages;

  /// Takes over the cells of another cache of the same source that this one lacks; none of a
  /// language that is full there.
  void addMissing(const GeocodingCache& other);

  friend bool operator==(const GeocodingCache&, const GeocodingCache&) = default;
};

/// The language of a locale, under which its answers are kept: "ru" for "ru_RU".
std::string cacheLanguage(std::string_view localeID);

namespace GeocodingCacheFile {

std::string encode(const GeocodingCache& cache);
/// Nothing for what is not a cache of this version; cells that do not fit are left out.
std::optional<GeocodingCache> decode(std::string_view text);

/// The cache of a state folder as far as it holds answers of `source`; an empty one of that source
/// otherwise. What cannot be read counts as absent.
GeocodingCache load(const Folder& stateFolder, const std::string& source);
/// Replaces the file as a whole; what another process has added to it meanwhile stays in it. False,
/// and nothing written, when another process holds the folder. Throws FileError.
bool save(Folder& stateFolder, GeocodingCache cache);
/// Removes the file; false when there was none. Throws FileError.
bool reset(Folder& stateFolder);

}  // namespace GeocodingCacheFile

}  // namespace tavrix
