#include "transfer/DifferingFiles.h"

namespace tavrix {

std::string_view textOf(DifferingFile::Kind kind) {
  constexpr std::array<std::string_view, 4> texts{"damaged", "changed", "foreign", "emptied"};
  return texts.at(static_cast<std::size_t>(kind));
}

DifferingCounts countsOf(const std::vector<DifferingFile>& files) {
  DifferingCounts counts;
  for (const DifferingFile& file : files) {
    auto& ofKind = counts.kinds.at(static_cast<std::size_t>(file.kind));
    if (ofKind.files++ == 0) ofKind.firstPath = file.path;
  }
  return counts;
}

}  // namespace tavrix
