#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

#include "device/RangedReader.h"

namespace tavrix {

/// The bytes of a file by their place, fetched in few ranges, each kept. What one file may cost is
/// bounded, so that a file that lies about its structure ends as one without metadata.
class FileBytes {
 public:
  explicit FileBytes(RangedReader& file) : file_(file), size_(file.size()) {}

  std::uint64_t size() const { return size_; }
  /// Exactly `count` bytes from `offset` on; nothing when the file has not so many there, or when
  /// it has cost enough already. Valid as long as this object.
  std::optional<std::string_view> at(std::uint64_t offset, std::size_t count);

  /// Bytes that are fetched at once, when the file has so many.
  static constexpr std::size_t rangeBytes = 16 * 1024;
  /// The same of a file that has cost more ranges than usual ones do: whoever hops from one long
  /// part to the next wants little more than their heads.
  static constexpr std::size_t wideRanges = 8;
  static constexpr std::size_t narrowBytes = 4 * 1024;
  /// What one file may cost in all.
  static constexpr std::size_t maxBytes = 4 * 1024 * 1024;
  static constexpr std::size_t maxRanges = maxBytes / narrowBytes;

 private:
  struct Range {
    std::uint64_t offset;
    std::string bytes;
  };
  const Range* fetched(std::uint64_t offset, std::size_t count) const;
  const Range* fetch(std::uint64_t offset, std::size_t count);

  RangedReader& file_;
  std::uint64_t size_;
  std::size_t bytesFetched_ = 0;
  std::deque<Range> ranges_;
};

}  // namespace tavrix
