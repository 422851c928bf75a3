#include "transfer/LeftParts.h"

#include <algorithm>

#include "foundation/files/FileError.h"
#include "transfer/FileNames.h"

namespace tavrix {
namespace {

bool removed(Folder& destination, const std::string& path) {
  try {
    destination.removeFile(path);
    return true;
  } catch (const FileError&) {
    // The run itself replaces it, or meets the same error and reports it.
    return false;
  }
}

/// A record may claim a million paths; there is seldom anything to compare them with.
bool hasParts(const FilesOnDisk& listed) {
  return std::any_of(listed.begin(), listed.end(),
                     [](const auto& file) { return file.first.ends_with(".part"); });
}

}  // namespace

std::uint64_t LeftParts::remove(Folder& destination, const FilesOnDisk& listed,
                                const DestinationMarker::Marker& marker) {
  if (!destination.isLocked() || !hasParts(listed)) return 0;
  std::uint64_t count = 0;
  for (const auto& record : marker.records) {
    for (const auto& file : record.files) {
      if (!file.isClaim()) continue;
      for (const std::string& part : partPathsOf(file.path)) {
        if (listed.contains(part) && removed(destination, part)) ++count;
      }
    }
  }
  return count;
}

}  // namespace tavrix
