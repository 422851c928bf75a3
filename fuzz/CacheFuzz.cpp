// Any bytes are a cache of some lines. What is read of them must come back equal from the lines
// that are written, and under the keys of its records.

#include <cstdint>
#include <cstdlib>

#include "device/MetadataCache.h"
#include "media/Snapshot.h"

using namespace tavrix;

namespace {

class TextSource : public ByteReader {
 public:
  explicit TextSource(std::string_view rest) : rest_(rest) {}
  std::size_t read(std::span<char> buffer) override {
    const std::size_t count = rest_.copy(buffer.data(), buffer.size());
    rest_.remove_prefix(count);
    return count;
  }

 private:
  std::string_view rest_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text{reinterpret_cast<const char*>(data), size};
  TextSource source{text};
  const auto records = readJsonLines(source);
  StringSink lines;
  for (const auto& [key, item] : records) {
    if (key != MetadataCache::key(item) || MetadataCache::isIncomplete(item)) std::abort();
    Snapshot::writeLine(item, lines);
  }
  TextSource written{lines.text()};
  if (readJsonLines(written) != records) std::abort();
  MetadataCache::decodeLegacy(text);
  return 0;
}
