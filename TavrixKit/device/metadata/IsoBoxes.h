#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "device/metadata/FileBytes.h"

namespace tavrix {

/// A box of an ISO base media file (ISO/IEC 14496-12, 4.2) or an atom of a QuickTime file.
struct IsoBox {
  std::string_view type;    ///< four bytes
  std::uint64_t begin = 0;  ///< offset of its content in the file
  std::uint64_t end = 0;    ///< offset just past it

  std::uint64_t length() const { return end - begin; }
};

/// Iterates over the consecutive boxes in [begin, end) of a file.
class IsoBoxes {
 public:
  IsoBoxes(FileBytes& file, std::uint64_t begin, std::uint64_t end)
      : file_(file), offset_(begin), end_(end) {}

  /// Returns the next box. Returns nullopt after the last box, at a broken box, and after more
  /// boxes than any real file has.
  std::optional<IsoBox> next();

  /// Returns the first box of type `type` in [begin, end), or nullopt if there is none.
  static std::optional<IsoBox> find(FileBytes& file, std::uint64_t begin, std::uint64_t end,
                                    std::string_view type);

 private:
  static constexpr int maxBoxes = 4096;

  FileBytes& file_;
  std::uint64_t offset_;
  std::uint64_t end_;
  int count_ = 0;
};

/// Returns the content of a box. Returns nullopt if the box is implausibly large, or if
/// FileBytes::at() does not provide it.
std::optional<std::string_view> contentOf(FileBytes& file, const IsoBox& box);

}  // namespace tavrix
