#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

#include "device/metadata/RangedReader.h"

namespace tavrix {

/// The bytes of a file by offset, fetched in few ranges, each of which is kept. The number of bytes
/// and ranges per file is limited, so that a file with a false structure is treated as one without
/// metadata.
class FileBytes {
 public:
  /// `firstBytes` is the least number of bytes that the first fetch asks for.
  explicit FileBytes(RangedReader& file, std::size_t firstBytes = rangeBytes)
      : file_(file), size_(file.size()), firstBytes_(firstBytes) {}

  std::uint64_t size() const { return size_; }
  /// Returns the number of ranges that were fetched.
  std::size_t ranges() const { return ranges_.size(); }
  /// Returns exactly `count` bytes from `offset` on. Returns nullopt if the file has fewer bytes
  /// there, or if fetching them would exceed the limits. The view is valid as long as this object.
  std::optional<std::string_view> at(std::uint64_t offset, std::size_t count);
  /// As at(), but fetches nothing: returns nullopt if a range with these bytes was not fetched yet.
  std::optional<std::string_view> kept(std::uint64_t offset, std::size_t count) const;

  /// Least number of bytes fetched at once, if the file has that many.
  static constexpr std::size_t rangeBytes = 16 * 1024;
  /// After `wideRanges` fetches, more than a usual file needs, the least number is `narrowBytes`: a
  /// reader that jumps from one long part to the next needs little more than their headers.
  static constexpr std::size_t wideRanges = 8;
  static constexpr std::size_t narrowBytes = 4 * 1024;
  /// Limits for one file.
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
  std::size_t firstBytes_;
  std::size_t bytesFetched_ = 0;
  std::deque<Range> ranges_;
};

}  // namespace tavrix
