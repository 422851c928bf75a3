#include "device/metadata/IsoBoxes.h"

#include <algorithm>

#include "device/metadata/Bytes.h"

namespace tavrix {

std::optional<IsoBox> IsoBoxes::next() {
  if (++count_ > maxBoxes || offset_ >= end_) return std::nullopt;
  const auto head = file_.at(offset_, 8);
  if (!head) return std::nullopt;
  std::uint64_t size = bigEndian(head->substr(0, 4));
  std::uint64_t headBytes = 8;
  if (size == 1) {
    const auto largeSize = file_.at(offset_ + 8, 8);
    if (!largeSize) return std::nullopt;
    size = bigEndian(*largeSize);
    headBytes = 16;
  } else if (size == 0) {
    size = end_ - offset_;  // it extends to the end
  }
  if (size < headBytes || end_ - offset_ < headBytes) return std::nullopt;
  // In a truncated file, a box ends with the file.
  size = std::min(size, end_ - offset_);
  const IsoBox box{head->substr(4), offset_ + headBytes, offset_ + size};
  offset_ += size;
  return box;
}

std::optional<IsoBox> IsoBoxes::find(FileBytes& file, std::uint64_t begin, std::uint64_t end,
                                     std::string_view type) {
  IsoBoxes boxes{file, begin, end};
  while (auto box = boxes.next()) {
    if (box->type == type) return box;
  }
  return std::nullopt;
}

std::optional<std::string_view> contentOf(FileBytes& file, const IsoBox& box) {
  constexpr std::uint64_t maxContent = 1024 * 1024;
  if (box.length() > maxContent) return std::nullopt;
  return file.at(box.begin, static_cast<std::size_t>(box.length()));
}

}  // namespace tavrix
