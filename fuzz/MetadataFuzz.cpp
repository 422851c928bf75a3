// Reads arbitrary bytes as a file of each kind. The metadata must be within bounds, and the cost
// bounded.

#include <array>
#include <cstdint>
#include <cstdlib>

#include "device/metadata/Bytes.h"
#include "device/metadata/Containers.h"
#include "device/metadata/Iso6709.h"
#include "device/metadata/MetadataReader.h"

using namespace tavrix;

namespace {

class TextFile : public RangedReader {
 public:
  explicit TextFile(std::string_view bytes) : bytes_(bytes) {}
  std::uint64_t size() const override { return bytes_.size(); }
  std::size_t read(std::uint64_t offset, std::span<char> buffer) override {
    if (offset > bytes_.size()) std::abort();
    if (++ranges_ > FileBytes::maxRanges) std::abort();
    return bytes_.substr(static_cast<std::size_t>(offset)).copy(buffer.data(), buffer.size());
  }

 private:
  std::string_view bytes_;
  std::size_t ranges_ = 0;
};

void check(const MediaMetadata& metadata) {
  if (metadata.lat.has_value() != metadata.lon.has_value()) std::abort();
  if (metadata.lat && !(*metadata.lat >= -90 && *metadata.lat <= 90)) std::abort();
  if (metadata.lon && !(*metadata.lon >= -180 && *metadata.lon <= 180)) std::abort();
  if (metadata.px && (*metadata.px <= 0 || !metadata.py || *metadata.py <= 0)) std::abort();
  if (metadata.exifOffset && !metadata.exifDate) std::abort();
  if (metadata.exifDate && !instantOfExif(*metadata.exifDate, std::nullopt, TimeZone::utc())) {
    std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes{reinterpret_cast<const char*>(data), size};
  TextFile file{bytes};
  check(MetadataReader::read(file));
  // Also calls a reader directly, which a wrong signature would have prevented.
  constexpr std::array<MediaMetadata (*)(FileBytes&), 8> readers{
      readJpeg, readPng, readTiff, readHeif, readMovie, readGif, readBmp, readWebp};
  TextFile again{bytes};
  FileBytes content{again};
  check(readers[size % readers.size()](content));
  parseIso6709(bytes);
  return 0;
}
