#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "foundation/files/Folder.h"
#include "media/SnapshotItem.h"

namespace tavrix {

/// One file of the sample phone; the item tells what the bytes hold.
struct SampleFile {
  SnapshotItem item;
  std::string bytes;

  friend bool operator==(const SampleFile&, const SampleFile&) = default;
};

struct SampleOptions {
  std::uint64_t seed = 1;
  int longSide = 2688;  ///< of a full-size still, in pixels
};

/// A made-up phone library: equal options give equal files, byte for byte.
namespace SampleLibrary {

/// Makes the files one by one in the order of the phone's catalogue.
void makeEach(const SampleOptions& options, const std::function<void(SampleFile)>& receiver);

/// Writes media/ and then snapshot.json, so that a folder with a snapshot is whole. Files of the
/// same names are replaced. Gives the number of media files. Throws FileError.
std::size_t write(const SampleOptions& options, Folder& folder);

}  // namespace SampleLibrary

}  // namespace tavrix
