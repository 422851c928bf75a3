// Reads arbitrary bytes as the defaults file. If they decode, writing and reading must give the
// same text; otherwise only JsonError may be thrown.

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "settings/defaults/DefaultsFile.h"

using namespace tavrix;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  DefaultsObjects objects;
  try {
    objects = DefaultsFile::decode({reinterpret_cast<const char*>(data), size});
  } catch (const JsonError&) {
    return 0;
  }
  const std::string text = DefaultsFile::encode(objects);
  if (DefaultsFile::encode(DefaultsFile::decode(text)) != text) std::abort();
  return 0;
}
