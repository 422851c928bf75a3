#pragma once

#include <string>
#include <string_view>

#include "device/metadata/RangedReader.h"

namespace tavrix {

/// A file in memory that counts the ranges and bytes that are read.
class CountingReader : public RangedReader {
 public:
  explicit CountingReader(std::string_view bytes) : bytes_(bytes) {}

  std::uint64_t size() const override { return bytes_.size(); }
  std::size_t read(std::uint64_t offset, std::span<char> buffer) override {
    ++ranges_;
    const std::size_t count =
        offset >= bytes_.size()
            ? 0
            : bytes_.substr(static_cast<std::size_t>(offset)).copy(buffer.data(), buffer.size());
    bytesRead_ += count;
    return count;
  }

  std::size_t ranges() const { return ranges_; }
  std::size_t bytesRead() const { return bytesRead_; }

 private:
  std::string_view bytes_;
  std::size_t ranges_ = 0;
  std::size_t bytesRead_ = 0;
};

}  // namespace tavrix
