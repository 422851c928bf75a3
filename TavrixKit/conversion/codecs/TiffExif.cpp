#include "conversion/codecs/TiffExif.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "device/metadata/Bytes.h"
#include "transfer/MediaConverter.h"

namespace tavrix {
namespace {

constexpr std::uint16_t exifDirectoryTag = 34665;
constexpr std::uint16_t gpsDirectoryTag = 34853;
constexpr std::uint16_t interoperabilityTag = 40965;

/// Description, maker, model, orientation, resolutions, software, date, artist, copyright.
constexpr std::array<std::uint16_t, 14> describingTags{270, 271, 272, 274, 282,   283,   296,
                                                       305, 306, 315, 316, 33432, 34665, 34853};

bool describes(std::uint16_t tag) {
  return std::find(describingTags.begin(), describingTags.end(), tag) != describingTags.end();
}

struct Field {
  std::uint16_t tag = 0;
  std::uint16_t type = 0;
  std::uint32_t count = 0;
  std::string_view value;  ///< its bytes, independent of their position in the file
};

/// Reads a TIFF structure (TIFF 6.0) in memory. Anything outside its bounds is left out.
class Tiff {
 public:
  explicit Tiff(std::string_view bytes) : bytes_(bytes), isLittle_(bytes.starts_with("II")) {}

  bool isTiff() const {
    return bytes_.size() >= 8 && (isLittle_ || bytes_.starts_with("MM")) && number(2, 2) == 42;
  }
  bool isLittleEndian() const { return isLittle_; }
  std::uint64_t firstDirectory() const { return number(4, 4); }

  std::vector<Field> fields(std::uint64_t directory) const {
    std::vector<Field> result;
    if (directory < 8 || directory + 2 > bytes_.size()) return result;
    const std::uint64_t count = std::min<std::uint64_t>(number(directory, 2), maxFields);
    for (std::uint64_t i = 0; i < count; ++i) {
      const std::uint64_t entry = directory + 2 + i * 12;
      if (entry + 12 > bytes_.size()) break;
      if (const auto field = fieldAt(entry)) result.push_back(*field);
    }
    return result;
  }
  /// Returns the field's first value as a whole number; 0 if it has none.
  std::uint64_t valueOf(const Field& field) const {
    if (field.value.size() < widthOf(field.type) || widthOf(field.type) > 4) return 0;
    return decoded(field.value.substr(0, widthOf(field.type)));
  }
  std::uint64_t decoded(std::string_view bytes) const {
    return isLittle_ ? littleEndian(bytes) : bigEndian(bytes);
  }

 private:
  static constexpr std::uint64_t maxFields = 1024;

  static std::size_t widthOf(std::uint16_t type) {
    constexpr std::array<std::size_t, 13> widths{0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8};
    return type < widths.size() ? widths.at(type) : 0;
  }
  std::uint64_t number(std::uint64_t at, std::size_t width) const {
    return decoded(bytes_.substr(static_cast<std::size_t>(at), width));
  }
  std::optional<Field> fieldAt(std::uint64_t entry) const {
    Field field{static_cast<std::uint16_t>(number(entry, 2)),
                static_cast<std::uint16_t>(number(entry + 2, 2)),
                static_cast<std::uint32_t>(number(entry + 4, 4)),
                {}};
    const std::uint64_t size = std::uint64_t{field.count} * widthOf(field.type);
    const std::uint64_t at = size <= 4 ? entry + 8 : number(entry + 8, 4);
    if (size == 0 || at > bytes_.size() || size > bytes_.size() - at) return std::nullopt;
    field.value = bytes_.substr(static_cast<std::size_t>(at), static_cast<std::size_t>(size));
    return field;
  }

  std::string_view bytes_;
  bool isLittle_;
};

/// Writes directories with new offsets, each followed by its values.
class BlockWriter {
 public:
  explicit BlockWriter(const Tiff& tiff) : tiff_(tiff) {
    block_ = tiff.isLittleEndian() ? "II" : "MM";
    add(42, 2);
    add(8, 4);
  }

  void addDirectory(const std::vector<Field>& fields, int depth) {
    std::size_t at = block_.size() + 2;
    if (at + fields.size() * 12 > maxBlock)
      throw ConversionError{ConversionFailure::metadataTooLarge};
    add(fields.size(), 2);
    block_.append(fields.size() * 12 + 4, '\0');
    for (const Field& field : fields) {
      set(at, field.tag, 2);
      set(at + 2, field.type, 2);
      set(at + 4, field.count, 4);
      if (isDirectory(field.tag) && depth == 0) {
        set(at + 2, 4, 2);
        set(at + 4, 1, 4);
        set(at + 8, block_.size(), 4);
        addDirectory(withoutDirectories(tiff_.fields(tiff_.valueOf(field))), 1);
      } else if (field.value.size() <= 4) {
        std::copy(field.value.begin(), field.value.end(), block_.begin() + std::ptrdiff_t(at + 8));
      } else {
        set(at + 8, block_.size(), 4);
        append(field.value);
      }
      at += 12;
    }
  }
  std::string take() { return std::move(block_); }

 private:
  static constexpr std::size_t maxBlock = 65527;

  static bool isDirectory(std::uint16_t tag) {
    return tag == exifDirectoryTag || tag == gpsDirectoryTag;
  }
  static std::vector<Field> withoutDirectories(std::vector<Field> fields) {
    std::erase_if(fields, [](const Field& field) {
      return isDirectory(field.tag) || field.tag == interoperabilityTag;
    });
    return fields;
  }
  void append(std::string_view value) {
    if (value.size() > maxBlock || block_.size() + value.size() > maxBlock)
      throw ConversionError{ConversionFailure::metadataTooLarge};
    block_ += value;
    if (block_.size() % 2 != 0) block_ += '\0';
  }
  void add(std::uint64_t value, std::size_t width) {
    block_.append(width, '\0');
    set(block_.size() - width, value, width);
  }
  void set(std::size_t at, std::uint64_t value, std::size_t width) {
    for (std::size_t i = 0; i < width; ++i, value >>= 8U) {
      block_[tiff_.isLittleEndian() ? at + i : at + width - 1 - i] =
          static_cast<char>(value & 0xFFU);
    }
  }

  const Tiff& tiff_;
  std::string block_;
};

}  // namespace

std::string exifOfTiff(std::span<const char> source) {
  const Tiff tiff{{source.data(), source.size()}};
  if (!tiff.isTiff()) return {};
  std::vector<Field> fields = tiff.fields(tiff.firstDirectory());
  std::erase_if(fields, [](const Field& field) { return !describes(field.tag); });
  if (fields.empty()) return {};
  BlockWriter writer{tiff};
  writer.addDirectory(fields, 0);
  return writer.take();
}

bool isRawTiff(std::span<const char> source) {
  constexpr std::uint16_t kindTag = 254;
  constexpr std::uint16_t compressionTag = 259;
  constexpr std::uint16_t photometricTag = 262;
  constexpr std::uint16_t dngVersionTag = 50706;
  const std::string_view bytes{source.data(), source.size()};
  if (bytes.size() > 10 && bytes.substr(8, 2) == "CR") return true;
  const Tiff tiff{bytes};
  if (!tiff.isTiff()) return false;
  const std::vector<Field> fields = tiff.fields(tiff.firstDirectory());
  return std::any_of(fields.begin(), fields.end(), [&](const Field& field) {
    const std::uint64_t value = tiff.valueOf(field);
    return field.tag == dngVersionTag || (field.tag == kindTag && (value & 1U) != 0) ||
           (field.tag == photometricTag && (value == 32803 || value == 34892)) ||
           (field.tag == compressionTag && (value == 34713 || value == 32767));
  });
}

}  // namespace tavrix
