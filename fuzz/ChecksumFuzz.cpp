// Reads arbitrary bytes as a line of a checksum list. If it decodes, writing and reading must give
// the same entry, on one line.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "transfer/ChecksumFile.h"

using namespace tavrix;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view line{reinterpret_cast<const char*>(data), size};
  const auto entry = ChecksumFile::decode(line);
  if (!entry) return 0;
  std::string written = ChecksumFile::encode(*entry);
  if (written.find('\n') != written.size() - 1) std::abort();
  written.pop_back();
  if (ChecksumFile::decode(written) != entry) std::abort();
  return 0;
}
