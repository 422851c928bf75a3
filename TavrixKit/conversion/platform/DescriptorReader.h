#pragma once

#include "device/RangedReader.h"

namespace tavrix {

/// Reads pieces of a file that is open already. Throws FileError.
class DescriptorReader : public RangedReader {
 public:
  /// The descriptor stays the caller's.
  explicit DescriptorReader(int descriptor) : descriptor_(descriptor) {}
  std::uint64_t size() const override;
  std::size_t read(std::uint64_t offset, std::span<char> buffer) override;

 private:
  int descriptor_;
};

}  // namespace tavrix
