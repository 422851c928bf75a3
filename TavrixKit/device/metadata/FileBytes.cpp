#include "device/metadata/FileBytes.h"

#include <algorithm>

namespace tavrix {

const FileBytes::Range* FileBytes::fetched(std::uint64_t offset, std::size_t count) const {
  for (const Range& range : ranges_) {
    if (offset >= range.offset && offset - range.offset <= range.bytes.size() &&
        range.bytes.size() - (offset - range.offset) >= count) {
      return &range;
    }
  }
  return nullptr;
}

const FileBytes::Range* FileBytes::fetch(std::uint64_t offset, std::size_t count) {
  const std::size_t later = ranges_.size() < wideRanges ? rangeBytes : narrowBytes;
  const std::size_t least = ranges_.empty() ? firstBytes_ : later;
  const std::uint64_t wanted = std::min<std::uint64_t>(std::max(count, least), size_ - offset);
  if (ranges_.size() >= maxRanges || wanted > maxBytes - bytesFetched_) return nullptr;
  Range range{offset, std::string(wanted, '\0')};
  range.bytes.resize(file_.read(offset, range.bytes));
  bytesFetched_ += wanted;
  // The file may have become shorter since its size was read.
  const bool isEnough = range.bytes.size() >= count;
  ranges_.push_back(std::move(range));
  return isEnough ? &ranges_.back() : nullptr;
}

std::optional<std::string_view> FileBytes::kept(std::uint64_t offset, std::size_t count) const {
  const Range* const range = fetched(offset, count);
  if (range == nullptr) return std::nullopt;
  return std::string_view{range->bytes}.substr(static_cast<std::size_t>(offset - range->offset),
                                               count);
}

std::optional<std::string_view> FileBytes::at(std::uint64_t offset, std::size_t count) {
  if (offset > size_ || count > size_ - offset) return std::nullopt;
  const Range* range = fetched(offset, count);
  if (range == nullptr) range = fetch(offset, count);
  if (range == nullptr) return std::nullopt;
  return std::string_view{range->bytes}.substr(offset - range->offset, count);
}

}  // namespace tavrix
