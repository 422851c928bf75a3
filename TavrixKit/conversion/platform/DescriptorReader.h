#pragma once

#include "device/metadata/RangedReader.h"

namespace tavrix {

/// Reads pieces of an open file. Throws FileError.
class DescriptorReader : public RangedReader {
 public:
  /// The caller keeps the ownership of the descriptor.
  explicit DescriptorReader(int descriptor) : descriptor_(descriptor) {}
  std::uint64_t size() const override;
  std::size_t read(std::uint64_t offset, std::span<char> buffer) override;

 private:
  int descriptor_;
};

}  // namespace tavrix
