#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "device/FileBytes.h"

namespace tavrix {

/// A box of an ISO base media file (ISO/IEC 14496-12, 4.2) or an atom of a QuickTime one.
struct IsoBox {
  std::string_view type;    ///< four bytes
  std::uint64_t begin = 0;  ///< of its content, in the file
  std::uint64_t end = 0;    ///< behind it

  std::uint64_t length() const { return end - begin; }
};

/// Goes over the boxes that lie one behind the other in [begin, end) of a file.
class IsoBoxes {
 public:
  IsoBoxes(FileBytes& file, std::uint64_t begin, std::uint64_t end)
      : file_(file), offset_(begin), end_(end) {}

  /// The next box; nothing behind the last one, behind one that is broken, and when there were more
  /// than any real file has.
  std::optional<IsoBox> next();

  /// The first box of a type in [begin, end); nothing when there is none.
  static std::optional<IsoBox> find(FileBytes& file, std::uint64_t begin, std::uint64_t end,
                                    std::string_view type);

 private:
  static constexpr int maxBoxes = 4096;

  FileBytes& file_;
  std::uint64_t offset_;
  std::uint64_t end_;
  int count_ = 0;
};

/// The content of a box; nothing when it is larger than such a box ever is.
std::optional<std::string_view> contentOf(FileBytes& file, const IsoBox& box);

}  // namespace tavrix
