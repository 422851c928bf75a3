#include "conversion/codecs/HeifReferences.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "device/metadata/Bytes.h"
#include "device/metadata/HeifItems.h"
#include "device/metadata/MemoryReader.h"

namespace tavrix {
namespace {

/// Returns true if a reference of this type and content must be hidden.
bool isInTheWay(std::string_view type, std::string_view content, std::size_t idBytes) {
  if (type == "cdsc") return true;
  ByteCursor cursor{content};
  cursor.take(idBytes);
  return type == "auxl" && cursor.number(2) > 1;
}

}  // namespace

std::size_t relaxHeifReferences(std::span<char> source) {
  MemoryReader reader{source};
  FileBytes file{reader};
  const auto items = HeifItems::open(file);
  const auto references = items ? items->box("iref") : std::nullopt;
  const auto version = references ? file.at(references->begin, 1) : std::nullopt;
  if (!version) return 0;
  const std::size_t idBytes = version->front() == 0 ? 2 : 4;
  std::size_t count = 0;
  IsoBoxes boxes{file, references->begin + 4, references->end};
  std::uint64_t begin = references->begin + 4;
  while (const auto reference = boxes.next()) {
    const std::uint64_t type = std::exchange(begin, reference->end) + 4;
    const auto content = contentOf(file, *reference);
    if (!content || !isInTheWay(reference->type, *content, idBytes)) continue;
    constexpr std::string_view unknownType = "skip";
    std::copy(unknownType.begin(), unknownType.end(), source.data() + type);
    ++count;
  }
  return count;
}

}  // namespace tavrix
