#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "foundation/files/Folder.h"
#include "media/SnapshotItem.h"

namespace tavrix {

/// One file of the sample phone; the item describes the bytes.
struct SampleFile {
  SnapshotItem item;
  std::string bytes;

  friend bool operator==(const SampleFile&, const SampleFile&) = default;
};

struct SampleOptions {
  std::uint64_t seed = 1;
  int longSide = 2688;  ///< of a full-size still, in pixels
};

/// A synthetic phone library. Equal options give identical files.
namespace SampleLibrary {

/// Generates the files one by one, in the order of the phone's catalogue.
void makeEach(const SampleOptions& options, const std::function<void(SampleFile)>& receiver);

/// Writes media/ and then snapshot.json, so a folder with a snapshot is always complete. Replaces
/// files of the same names. Returns the number of media files. Throws FileError.
std::size_t write(const SampleOptions& options, Folder& folder);

}  // namespace SampleLibrary

}  // namespace tavrix
