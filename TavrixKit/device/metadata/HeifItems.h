#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "device/metadata/FileBytes.h"
#include "device/metadata/IsoBoxes.h"

namespace tavrix {

/// The items of a HEIF file, which its "meta" box lists with the location of their bytes and their
/// properties (ISO/IEC 14496-12, 8.11). Exif block and XMP packet are items of their own that
/// describe the picture. Broken parts are treated as absent.
class HeifItems {
 public:
  /// Offset and length of bytes in the file; the file may be shorter.
  struct Extent {
    std::uint64_t begin = 0;
    std::uint64_t length = 0;
  };

  /// Opens the "meta" box. Returns nullopt if the file has no such box.
  static std::optional<HeifItems> open(FileBytes& file);

  /// Returns the item number of the primary picture; 0 if there is none.
  std::uint64_t primary() const { return primary_; }
  /// Returns the location of the TIFF structure in the primary picture's Exif block, or nullopt if
  /// there is none.
  std::optional<Extent> exif() const;
  /// Returns the location of the primary picture's XMP packet, or nullopt if there is none.
  std::optional<Extent> xmp() const;
  /// Returns the item numbers of the thumbnails of the primary picture.
  std::vector<std::uint64_t> thumbnails() const;
  /// Returns the item numbers of the other views of the primary picture if it is one of a stereo
  /// pair: the entity group "ster" (ISO/IEC 23008-12, 6.8.5).
  std::vector<std::uint64_t> otherViews() const;
  /// Returns the type of an item, such as "hvc1"; empty if there is no such item.
  std::string_view typeOf(std::uint64_t item) const;
  /// Returns the location of an item's bytes. Returns nullopt if they are scattered or in another
  /// file.
  std::optional<Extent> extentOf(std::uint64_t item) const;
  /// Returns the properties of an item in the order in which they apply.
  std::vector<IsoBox> propertiesOf(std::uint64_t item) const;
  /// Returns the primary picture's first property of type `type`, or nullopt if there is none.
  std::optional<IsoBox> propertyOfPrimary(std::string_view type) const;
  /// Returns the first box of type `type` directly in the "meta" box, or nullopt if there is none.
  std::optional<IsoBox> box(std::string_view type) const {
    return IsoBoxes::find(*file_, begin_, end_, type);
  }

 private:
  /// `meta` is the "meta" box; its content begins with version and flags.
  HeifItems(FileBytes& file, const IsoBox& meta)
      : file_(&file), begin_(meta.begin + 4), end_(meta.end), primary_(primaryItem()) {}

  /// An item in the list of all items.
  struct Entry {
    std::uint64_t item = 0;
    std::string_view type;
    std::string_view contentType;
  };

  std::string_view content(std::string_view type) const;
  std::uint64_t primaryItem() const;
  std::vector<Entry> entries() const;
  /// Returns the numbers of the items of type `type`. If `contentType` is not empty, only those of
  /// that content type.
  std::vector<std::uint64_t> itemsOf(std::string_view type, std::string_view contentType) const;
  /// Returns the items that refer to the primary picture by a reference of type `type`.
  std::vector<std::uint64_t> referringToPrimary(std::string_view type) const;
  /// Returns the item that describes the primary picture, else the first item; 0 if `items` is
  /// empty.
  std::uint64_t describing(const std::vector<std::uint64_t>& items) const;
  std::vector<std::uint64_t> indexesOf(std::uint64_t item, const IsoBox& properties) const;

  FileBytes* file_;
  std::uint64_t begin_;
  std::uint64_t end_;
  std::uint64_t primary_;
};

}  // namespace tavrix
