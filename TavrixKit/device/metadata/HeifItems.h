#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "device/FileBytes.h"
#include "device/IsoBoxes.h"

namespace tavrix {

/// The box "meta" of a HEIF file lists its items, where the bytes of each lie, and their properties
/// (ISO/IEC 14496-12, 8.11). Exif block and XMP packet are items of their own that describe the
/// picture. What is broken is taken as absent.
class HeifItems {
 public:
  /// Begin and length of bytes in the file; the file need not be as long.
  struct Extent {
    std::uint64_t begin = 0;
    std::uint64_t length = 0;
  };

  /// Nothing for a file without such a box.
  static std::optional<HeifItems> open(FileBytes& file);

  /// The primary picture's number; 0 for none.
  std::uint64_t primary() const { return primary_; }
  /// The TIFF structure of the primary picture's Exif block.
  std::optional<Extent> exif() const;
  /// The primary picture's XMP packet.
  std::optional<Extent> xmp() const;
  /// The first property of a type that the primary picture has.
  std::optional<IsoBox> propertyOfPrimary(std::string_view type) const;
  /// A box directly in the box "meta".
  std::optional<IsoBox> box(std::string_view type) const {
    return IsoBoxes::find(*file_, begin_, end_, type);
  }

 private:
  /// `meta` is the box; its content begins with version and flags.
  HeifItems(FileBytes& file, const IsoBox& meta)
      : file_(&file), begin_(meta.begin + 4), end_(meta.end), primary_(primaryItem()) {}

  std::string_view content(std::string_view type) const;
  std::uint64_t primaryItem() const;
  /// Of a type, and of a content type where one is given.
  std::vector<std::uint64_t> itemsOf(std::string_view type, std::string_view contentType) const;
  bool describesPrimary(std::uint64_t item) const;
  /// Of several items the one that describes the primary picture, else the first; 0 for none.
  std::uint64_t describing(const std::vector<std::uint64_t>& items) const;
  std::optional<Extent> extentOf(std::uint64_t item) const;
  std::vector<std::uint64_t> propertiesOfPrimary(const IsoBox& properties) const;

  FileBytes* file_;
  std::uint64_t begin_;
  std::uint64_t end_;
  std::uint64_t primary_;
};

}  // namespace tavrix
