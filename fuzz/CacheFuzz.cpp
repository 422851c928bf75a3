// Any bytes are a cache of some lines. What is read of them must come back equal from the lines
// that are written, and under the keys of its records.

#include <cstdint>
#include <cstdlib>

#include "device/MetadataCache.h"
#include "foundation/json/TextReader.h"
#include "media/Snapshot.h"

using namespace tavrix;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text{reinterpret_cast<const char*>(data), size};
  TextReader source{text};
  const auto records = readJsonLines(source);
  StringSink lines;
  for (const auto& [key, item] : records) {
    if (key != MetadataCache::key(item) || MetadataCache::isIncomplete(item)) std::abort();
    Snapshot::writeLine(item, lines);
  }
  TextReader written{lines.text()};
  if (readJsonLines(written) != records) std::abort();
  MetadataCache::decodeLegacy(text);
  return 0;
}
