// Reads arbitrary bytes as the cache of place names. If they decode, writing and reading must give
// the same cache; any other bytes are treated as absent.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "places/GeocodingCache.h"
#include "places/PlaceCells.h"

using namespace tavrix;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto cache = GeocodingCacheFile::decode({reinterpret_cast<const char*>(data), size});
  if (!cache) return 0;
  if (GeocodingCacheFile::decode(GeocodingCacheFile::encode(*cache)) != cache) std::abort();
  for (const auto& [language, cells] : cache->languages) {
    for (const auto& [key, place] : cells) {
      if (!PlaceCells::centerOf(key)) std::abort();
    }
  }
  return 0;
}
