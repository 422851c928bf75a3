#pragma once

#include <algorithm>

#include "device/metadata/RangedReader.h"

namespace tavrix {

/// Presents bytes in memory, which it does not own, as a file.
class MemoryReader : public RangedReader {
 public:
  explicit MemoryReader(std::span<const char> bytes) : bytes_(bytes) {}

  std::uint64_t size() const override { return bytes_.size(); }
  std::size_t read(std::uint64_t offset, std::span<char> buffer) override {
    if (offset >= bytes_.size()) return 0;
    const std::size_t count =
        std::min<std::size_t>(buffer.size(), bytes_.size() - static_cast<std::size_t>(offset));
    std::copy_n(bytes_.data() + offset, count, buffer.data());
    return count;
  }

 private:
  std::span<const char> bytes_;
};

}  // namespace tavrix
