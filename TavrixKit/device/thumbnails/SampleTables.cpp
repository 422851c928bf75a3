#include "device/thumbnails/SampleTables.h"

#include <limits>

#include "device/metadata/Bytes.h"

namespace tavrix {
namespace {

constexpr std::uint64_t maxSample = 4096;

/// A list of the table as numbers of four bytes each.
class Words {
 public:
  Words(FileBytes& file, std::optional<IsoBox> box) : file_(file), box_(box) {}

  bool exists() const { return box_.has_value(); }
  /// Returns the number at a position; 0, and hasFailed() from then on, if the list has none there.
  std::uint64_t at(std::uint64_t position) {
    const bool isInside = box_ && position < box_->length() / 4;
    const auto bytes = isInside ? file_.at(box_->begin + position * 4, 4) : std::nullopt;
    hasFailed_ = hasFailed_ || !bytes;
    return bytes ? bigEndian(*bytes) : 0;
  }
  bool hasFailed() const { return hasFailed_; }

 private:
  FileBytes& file_;
  std::optional<IsoBox> box_;
  bool hasFailed_ = false;
};

/// Place of a sample: its chunk, counted from 1, and how many samples of the chunk come before it.
struct Place {
  std::uint64_t chunk = 0;
  std::uint64_t before = 0;
  std::uint64_t description = 0;
};

/// Finds a sample, counted from 1, in the runs of chunks with equally many samples each.
std::optional<Place> placeOf(Words& runs, std::uint64_t sample) {
  std::uint64_t left = sample - 1;
  const std::uint64_t count = runs.at(1);
  for (std::uint64_t i = 0; i < count && !runs.hasFailed(); ++i) {
    const std::uint64_t first = runs.at(2 + 3 * i);
    const std::uint64_t perChunk = runs.at(3 + 3 * i);
    const std::uint64_t description = runs.at(4 + 3 * i);
    const std::uint64_t next =
        i + 1 < count ? runs.at(5 + 3 * i) : std::numeric_limits<std::uint32_t>::max();
    if (runs.hasFailed() || first == 0 || perChunk == 0 || next <= first) return std::nullopt;
    const std::uint64_t chunks = left / perChunk;
    if (chunks < next - first) return Place{first + chunks, left % perChunk, description};
    left -= (next - first) * perChunk;
  }
  return std::nullopt;
}

}  // namespace

std::optional<FilmSample> firstKeySample(FileBytes& file, const IsoBox& table) {
  const auto words = [&](std::string_view type) {
    return Words{file, IsoBoxes::find(file, table.begin, table.end, type)};
  };
  // Without the list of key samples, every sample is one.
  Words keys = words("stss");
  const std::uint64_t sample = keys.exists() && keys.at(1) > 0 ? keys.at(2) : 1;
  if (keys.exists() && keys.hasFailed()) return std::nullopt;
  if (sample == 0 || sample > maxSample) return std::nullopt;
  Words runs = words("stsc");
  const auto place = placeOf(runs, sample);
  if (!place) return std::nullopt;

  Words offsets = words("stco");
  Words largeOffsets = words("co64");
  const std::uint64_t at = place->chunk - 1;
  std::uint64_t begin = offsets.exists()
                            ? offsets.at(2 + at)
                            : (largeOffsets.at(2 + 2 * at) << 32U) + largeOffsets.at(3 + 2 * at);
  Words sizes = words("stsz");
  const std::uint64_t common = sizes.at(1);
  const auto sizeOf = [&](std::uint64_t number) {
    return common != 0 ? common : sizes.at(2 + number);
  };
  for (std::uint64_t other = sample - place->before; other < sample; ++other)
    begin += sizeOf(other);
  const FilmSample result{begin, sizeOf(sample), place->description};
  const bool hasFailed =
      sizes.hasFailed() || (offsets.exists() ? offsets : largeOffsets).hasFailed();
  return hasFailed ? std::nullopt : std::optional{result};
}

}  // namespace tavrix
