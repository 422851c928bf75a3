#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "device/metadata/FileBytes.h"

namespace tavrix {

/// The image file directories of a TIFF structure (TIFF 6.0), which is either a whole file or the
/// Exif block inside one.
class TiffBlock {
 public:
  struct Field {
    std::uint16_t tag = 0;
    std::uint16_t type = 0;
    std::uint32_t count = 0;
    std::uint64_t valueAt = 0;  ///< offset of its values in the block
  };
  using Directory = std::vector<Field>;

  /// Opens the block in the bytes [begin, begin + length) of a file. Returns nullopt if there is
  /// none.
  static std::optional<TiffBlock> open(FileBytes& file, std::uint64_t begin, std::uint64_t length);

  /// Returns a structure without a header, such as a maker note: offsets are those from `begin` on,
  /// and the caller knows the byte order and the offset of the first directory.
  static TiffBlock headless(FileBytes& file, std::uint64_t begin, std::uint64_t length,
                            bool isLittleEndian, std::uint64_t firstDirectory);

  /// Returns the file that has the block.
  FileBytes& file() const { return *file_; }
  /// Returns the offset of the block in the file.
  std::uint64_t begin() const { return begin_; }
  /// Returns the length of the block in bytes; the file may be shorter.
  std::uint64_t length() const { return length_; }
  /// Returns the offset of the first directory from the start of the block.
  std::uint64_t firstDirectory() const { return first_; }
  /// Returns the fields of the directory at `offset`; empty if there is no directory.
  Directory directory(std::uint64_t offset) const;
  /// Returns the offset of the directory that follows the one at `offset`; 0 if there is none.
  std::uint64_t nextDirectory(std::uint64_t offset) const;

  static const Field* find(const Directory& directory, std::uint16_t tag);
  /// Returns the value at `index` of a field of whole numbers. Returns nullopt if the field has
  /// another type or no such value.
  std::optional<std::uint64_t> number(const Field& field, std::uint32_t index = 0) const;
  /// Returns the unsigned number in the `count` bytes (at most 8) at `offset` of the block, for
  /// fields whose values have a structure of their own. Returns nullopt past the end.
  std::optional<std::uint64_t> numberAt(std::uint64_t offset, std::size_t count) const;
  /// Returns the value at `index` of a field of fractions, signed or unsigned. Returns nullopt if
  /// the field has another type or no such value, or if the denominator is 0.
  std::optional<double> rational(const Field& field, std::uint32_t index = 0) const;
  /// Returns the content of a text field up to its first NUL. A long text is cut. Returns nullopt
  /// if the field has another type.
  std::optional<std::string> text(const Field& field) const;

  /// Returns the size in bytes of one value of a type; 0 if the type does not exist.
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
