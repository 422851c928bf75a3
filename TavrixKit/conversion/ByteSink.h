#pragma once

#include <cstddef>
#include <span>

namespace tavrix {

/// Where the bytes of a result go, one piece behind the other. write() may throw FileError.
class ByteSink {
 public:
  virtual ~ByteSink() = default;
  virtual void write(std::span<const std::byte> bytes) = 0;
};

}  // namespace tavrix
