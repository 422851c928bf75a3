// Reads arbitrary bytes as the lines of a metadata cache. Every item read must be found by name,
// size, date and folder, and survive writing and reading. A line must have the same meaning whether
// or not it has the layout that the program writes.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "device/metadata/MetadataCache.h"
#include "foundation/json/TextReader.h"
#include "media/Snapshot.h"

using namespace tavrix;

namespace {

MetadataCache::Records recordsOf(std::string_view text) {
  TextReader source{text};
  return readJsonLines(source);
}

/// Returns the lines of all records, in an order independent of the map.
std::vector<std::string> linesOf(const MetadataCache::Records& records) {
  std::vector<std::string> lines;
  for (const auto& [key, item] : records) {
    StringSink line;
    Snapshot::writeLine(item, line);
    lines.push_back(line.text());
  }
  std::sort(lines.begin(), lines.end());
  return lines;
}

void checkFinding(const MetadataCache::Records& records) {
  for (const auto& [key, item] : records) {
    const auto* const found =
        MetadataCache::find(records, MetadataCache::key(item), item.dir, true);
    if (found == nullptr || MetadataCache::isIncomplete(item)) std::abort();
    // Only for names and folders that can exist on a disk.
    const bool isPossible = item.name.find('\0') == std::string::npos && item.dir != "";
    if (isPossible && *found != item) std::abort();
  }
}

void checkLayouts(std::string_view text) {
  const std::string_view line = text.substr(0, text.find('\n'));
  if (!line.starts_with('{') || line.size() > 1000) return;
  if (recordsOf(line) != recordsOf("{ " + std::string{line.substr(1)})) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text{reinterpret_cast<const char*>(data), size};
  const auto records = recordsOf(text);
  checkFinding(records);
  checkLayouts(text);
  const auto lines = linesOf(records);
  std::string written;
  for (const std::string& line : lines) written += line;
  if (linesOf(recordsOf(written)) != lines) std::abort();
  MetadataCache::decodeLegacy(text);
  return 0;
}
