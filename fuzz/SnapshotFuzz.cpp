// Reads arbitrary bytes as a snapshot. It must survive writing and reading, or SnapshotError must
// be thrown.

#include <cstdint>
#include <cstdlib>
#include <unordered_set>

#include "foundation/json/TextReader.h"
#include "media/Snapshot.h"

namespace {

using namespace tavrix;

void require(bool holds) {
  if (!holds) std::abort();
}

void checkRoundTrip(const std::vector<SnapshotItem>& items) {
  StringSink sink;
  Snapshot::write(items, sink);
  TextReader again{sink.text()};
  require(Snapshot::read(again) == items);
}

void checkAssets(const std::vector<MediaAsset>& assets, std::size_t count) {
  std::unordered_set<std::string_view> ids;
  for (const MediaAsset& asset : assets) require(ids.insert(asset.id()).second);
  require(ids.size() == count);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const TimeZone zone = TimeZone::load("America/New_York").value();
  const std::string_view text{reinterpret_cast<const char*>(data), size};
  try {
    TextReader source{text};
    const auto items = Snapshot::read(source);
    checkRoundTrip(items);
    TextReader sameSource{text};
    checkAssets(Snapshot::readAssets(sameSource, zone), items.size());
  } catch (const SnapshotError&) {
    // Invalid input must have no other effect.
  }
  return 0;
}
