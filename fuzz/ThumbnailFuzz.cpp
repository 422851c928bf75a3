// Reads arbitrary bytes as an entry of the thumbnail cache and as a thumbnail of another program.
// If an entry decodes, writing and reading it must give the same bytes.

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "device/thumbnails/DesktopThumbnails.h"
#include "device/thumbnails/ThumbnailEntry.h"
#include "foundation/Digest.h"

using namespace tavrix;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string body{reinterpret_cast<const char*>(data), size};
  // No mutation finds the digest, so it is put right.
  const std::string bytes = "tavrix-thumbnail 2 " + sha256Hex(body) + "\n" + body;
  const auto entry = ThumbnailFile::decode(bytes, "K", "1");
  if (entry) {
    const std::string again = ThumbnailFile::encode("K", *entry, "1");
    const auto reread = ThumbnailFile::decode(again, "K", "1");
    if (!reread || ThumbnailFile::encode("K", *reread, "1") != again) std::abort();
  }
  ThumbnailFile::decode(body, "K", "1");
  DesktopThumbnails::isOf(body, {"/a.jpg", 1, Instant{}});
  return 0;
}
