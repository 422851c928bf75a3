#pragma once

#include <vector>

#include "device/metadata/PixelSize.h"
#include "device/metadata/TiffBlock.h"

namespace tavrix {

/// One of the pictures in a TIFF structure: the full one, a preview, a page or a mask.
struct TiffPicture {
  TiffBlock::Directory directory;
  PixelSize size;       ///< 0 × 0 if the directory does not have it
  bool isFull = false;  ///< not marked as a preview, a page or a mask
};

namespace TiffPictures {

/// Returns the pictures in the chain of directories and in the subdirectories of each, in that
/// order. A damaged chain is followed as far as it leads to new directories.
std::vector<TiffPicture> read(const TiffBlock& block);
/// Returns the size of the full picture; 0 × 0 if there is none.
PixelSize fullSize(const std::vector<TiffPicture>& pictures);
/// Returns the first value of a field of whole numbers; 0 if the directory does not have it.
std::uint64_t number(const TiffBlock& block, const TiffBlock::Directory& directory,
                     std::uint16_t tag);

}  // namespace TiffPictures

}  // namespace tavrix
