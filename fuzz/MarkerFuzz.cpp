// Reads arbitrary bytes as a phone's record. If they decode, writing and reading must give the same
// record; otherwise they must be rejected silently or as a newer version.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "transfer/DestinationMarker.h"

using namespace tavrix;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  try {
    const auto record = DestinationMarker::decode({reinterpret_cast<const char*>(data), size});
    if (!record) return 0;
    if (DestinationMarker::decode(DestinationMarker::encode(*record)) != record) std::abort();
    const DestinationMarker::Marker marker{{*record}};
    if (marker.knownAssets(record->phoneHash).byLocalID.size() > record->files.size()) std::abort();
  } catch (const DestinationMarker::MarkerError& error) {
    if (error.version() <= DestinationMarker::schemaVersion) std::abort();
  }
  return 0;
}
