// Finds pictures in arbitrary bytes. The cost must be bounded, and what is found must come from the
// file: a small file that was made of a part is found again in itself.

#include <cstdint>
#include <cstdlib>

#include "device/metadata/FileBytes.h"
#include "device/metadata/MemoryReader.h"
#include "device/thumbnails/EmbeddedPicture.h"

using namespace tavrix;

namespace {

void require(bool holds) {
  if (!holds) std::abort();
}

class BoundedFile : public MemoryReader {
 public:
  explicit BoundedFile(std::span<const char> bytes) : MemoryReader(bytes) {}
  std::size_t read(std::uint64_t offset, std::span<char> buffer) override {
    constexpr std::size_t maxParts = 64;
    require(offset < size() && buffer.size() <= size() - offset);
    require(++ranges_ <= FileBytes::maxRanges + maxParts);
    return MemoryReader::read(offset, buffer);
  }

 private:
  std::size_t ranges_ = 0;
};

void check(const EmbeddedPicture& picture, std::string_view bytes) {
  using Origin = EmbeddedPicture::Origin;
  const std::string& own = picture.request.bytes;
  require(!own.empty());
  const bool isWhole = picture.origin == Origin::whole;
  require(!isWhole || own == bytes);
  require(isWhole ? picture.request.orientation == 0
                  : picture.request.orientation >= 0 && picture.request.orientation <= 8);
  require(isWhole || (picture.width > 0 && picture.height > 0) ||
          picture.origin == Origin::keyFrame);
  if (picture.origin != Origin::keyFrame) return;
  MemoryReader file{own};
  const auto again = EmbeddedPictures::find(file, {.mayReadWhole = false});
  require(again && again->request.bytes == own);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes{reinterpret_cast<const char*>(data), size};
  for (const std::uint32_t side : {1U, 320U, 5000U}) {
    BoundedFile file{bytes};
    const EmbeddedPictures::Wanted wanted{
        .leastSide = side, .mayReadWhole = size % 2 == 0, .prefersWholeToSmaller = size % 4 == 0};
    if (const auto picture = EmbeddedPictures::find(file, wanted)) check(*picture, bytes);
  }
  return 0;
}
