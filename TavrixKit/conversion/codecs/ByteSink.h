#pragma once

#include <cstddef>
#include <span>

namespace tavrix {

/// Receives the bytes of a result piece by piece. write() may throw FileError.
class ByteSink {
 public:
  virtual ~ByteSink() = default;
  virtual void write(std::span<const std::byte> bytes) = 0;
};

}  // namespace tavrix
