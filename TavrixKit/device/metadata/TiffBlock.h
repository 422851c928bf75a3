#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "device/FileBytes.h"

namespace tavrix {

/// The image file directories of a TIFF structure (TIFF 6.0), which is a whole file or lies
/// somewhere in one as its Exif block.
class TiffBlock {
 public:
  struct Field {
    std::uint16_t tag = 0;
    std::uint16_t type = 0;
    std::uint32_t count = 0;
    std::uint64_t valueAt = 0;  ///< where its values begin in the block
  };
  using Directory = std::vector<Field>;

  /// The block in the bytes [begin, begin + length) of a file; nothing when there is none.
  static std::optional<TiffBlock> open(FileBytes& file, std::uint64_t begin, std::uint64_t length);

  /// Offset of the first directory from the block's begin.
  std::uint64_t firstDirectory() const { return first_; }
  /// The fields of a directory; none when there is no directory.
  Directory directory(std::uint64_t offset) const;
  /// The offset that a directory names as the next one's; 0 for none.
  std::uint64_t nextDirectory(std::uint64_t offset) const;

  static const Field* find(const Directory& directory, std::uint16_t tag);
  /// The value of that place of a field of whole numbers.
  std::optional<std::uint64_t> number(const Field& field, std::uint32_t index = 0) const;
  /// The value of that place of a field of fractions, signed or not.
  std::optional<double> rational(const Field& field, std::uint32_t index = 0) const;
  /// A field of text, up to its first NUL; a long one is cut.
  std::optional<std::string> text(const Field& field) const;

  /// Bytes of one value of a type; 0 for a type that does not exist.
  static std::size_t bytesOf(std::uint16_t type);
  static constexpr std::size_t maxFields = 1024;

 private:
  TiffBlock(FileBytes& file, std::uint64_t begin, std::uint64_t length)
      : file_(&file), begin_(begin), length_(length) {}
  std::optional<std::string_view> bytes(std::uint64_t offset, std::size_t count) const;
  std::uint64_t decoded(std::string_view text) const;
  std::optional<Field> field(std::uint64_t offset, std::string_view entry) const;

  FileBytes* file_;
  std::uint64_t begin_;
  std::uint64_t length_;
  std::uint64_t first_ = 0;
  bool isLittleEndian_ = false;
};

}  // namespace tavrix
