#include "device/metadata/TiffBlock.h"

#include <algorithm>
#include <array>

#include "device/metadata/Bytes.h"

namespace tavrix {
namespace {

constexpr std::size_t headerBytes = 8;
constexpr std::size_t fieldBytes = 12;
constexpr std::size_t maxTextBytes = 256;

constexpr std::uint16_t asciiType = 2;
constexpr std::uint16_t rationalType = 5;
constexpr std::uint16_t signedRationalType = 10;

/// Returns true for the version of TIFF and for those that makers of cameras put in its place in
/// their raw files: Panasonic and Leica "U", Olympus "RO" and "RS".
bool isVersion(std::uint64_t version) {
  constexpr std::array<std::uint64_t, 4> versions{42, 0x55, 0x4F52, 0x5352};
  return std::find(versions.begin(), versions.end(), version) != versions.end();
}

}  // namespace

std::size_t TiffBlock::bytesOf(std::uint16_t type) {
  constexpr std::array<std::size_t, 14> sizes{0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8, 4};
  return type < sizes.size() ? sizes[type] : 0;
}

std::optional<TiffBlock> TiffBlock::open(FileBytes& file, std::uint64_t begin,
                                         std::uint64_t length) {
  TiffBlock block{file, begin, length};
  const auto header = block.bytes(0, headerBytes);
  if (!header) return std::nullopt;
  const std::string_view mark = header->substr(0, 2);
  block.isLittleEndian_ = mark == "II";
  if (!block.isLittleEndian_ && mark != "MM") return std::nullopt;
  if (!isVersion(block.decoded(header->substr(2, 2)))) return std::nullopt;
  block.first_ = block.decoded(header->substr(4, 4));
  return block;
}

TiffBlock TiffBlock::headless(FileBytes& file, std::uint64_t begin, std::uint64_t length,
                              bool isLittleEndian, std::uint64_t firstDirectory) {
  TiffBlock block{file, begin, length};
  block.isLittleEndian_ = isLittleEndian;
  block.first_ = firstDirectory;
  return block;
}

std::optional<std::string_view> TiffBlock::bytes(std::uint64_t offset, std::size_t count) const {
  if (offset > length_ || count > length_ - offset) return std::nullopt;
  return file_->at(begin_ + offset, count);
}

std::uint64_t TiffBlock::decoded(std::string_view text) const {
  return isLittleEndian_ ? littleEndian(text) : bigEndian(text);
}

std::optional<TiffBlock::Field> TiffBlock::field(std::uint64_t offset,
                                                 std::string_view entry) const {
  Field field{static_cast<std::uint16_t>(decoded(entry.substr(0, 2))),
              static_cast<std::uint16_t>(decoded(entry.substr(2, 2))),
              static_cast<std::uint32_t>(decoded(entry.substr(4, 4))), offset + 8};
  const std::uint64_t valueBytes = bytesOf(field.type) * std::uint64_t{field.count};
  if (valueBytes == 0) return std::nullopt;
  // Values that do not fit into the entry are stored elsewhere.
  if (valueBytes > 4) field.valueAt = decoded(entry.substr(8, 4));
  return field;
}

TiffBlock::Directory TiffBlock::directory(std::uint64_t offset) const {
  Directory directory;
  const auto countBytes = offset == 0 ? std::nullopt : bytes(offset, 2);
  if (!countBytes) return directory;
  const std::size_t count = std::min<std::size_t>(decoded(*countBytes), maxFields);
  const auto entries = bytes(offset + 2, count * fieldBytes);
  if (!entries) return directory;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t at = i * fieldBytes;
    const auto read = field(offset + 2 + at, entries->substr(at, fieldBytes));
    if (read) directory.push_back(*read);
  }
  return directory;
}

std::uint64_t TiffBlock::nextDirectory(std::uint64_t offset) const {
  const auto countBytes = bytes(offset, 2);
  if (!countBytes) return 0;
  const auto next = bytes(offset + 2 + decoded(*countBytes) * fieldBytes, 4);
  return next ? decoded(*next) : 0;
}

const TiffBlock::Field* TiffBlock::find(const Directory& directory, std::uint16_t tag) {
  const auto found = std::find_if(directory.begin(), directory.end(),
                                  [&](const Field& field) { return field.tag == tag; });
  return found == directory.end() ? nullptr : &*found;
}

std::optional<std::uint64_t> TiffBlock::number(const Field& field, std::uint32_t index) const {
  constexpr std::array<std::uint16_t, 4> wholeTypes{1, 3, 4, 13};
  const bool isWhole =
      std::find(wholeTypes.begin(), wholeTypes.end(), field.type) != wholeTypes.end();
  if (!isWhole || index >= field.count) return std::nullopt;
  const std::size_t size = bytesOf(field.type);
  return numberAt(field.valueAt + index * size, size);
}

std::optional<std::uint64_t> TiffBlock::numberAt(std::uint64_t offset, std::size_t count) const {
  const auto value = bytes(offset, count);
  if (!value) return std::nullopt;
  return decoded(*value);
}

std::optional<double> TiffBlock::rational(const Field& field, std::uint32_t index) const {
  const bool isSigned = field.type == signedRationalType;
  if ((field.type != rationalType && !isSigned) || index >= field.count) return std::nullopt;
  const auto value = bytes(field.valueAt + std::uint64_t{index} * 8, 8);
  if (!value) return std::nullopt;
  const auto part = [&](std::size_t at) {
    const auto bits = static_cast<std::uint32_t>(decoded(value->substr(at, 4)));
    return isSigned ? static_cast<double>(static_cast<std::int32_t>(bits))
                    : static_cast<double>(bits);
  };
  if (part(4) == 0) return std::nullopt;
  return part(0) / part(4);
}

std::optional<std::string> TiffBlock::text(const Field& field) const {
  if (field.type != asciiType) return std::nullopt;
  const auto value = bytes(field.valueAt, std::min<std::size_t>(field.count, maxTextBytes));
  if (!value) return std::nullopt;
  return std::string{value->substr(0, value->find('\0'))};
}

}  // namespace tavrix
