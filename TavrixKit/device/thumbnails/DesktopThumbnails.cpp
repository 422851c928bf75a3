#include "device/thumbnails/DesktopThumbnails.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <chrono>

#include "device/metadata/Bytes.h"
#include "foundation/Digest.h"
#include "foundation/files/FileError.h"
#include "foundation/files/Folder.h"

namespace tavrix::DesktopThumbnails {
namespace {

constexpr std::uint64_t maxPngBytes = std::uint64_t{4} << 20U;
constexpr std::string_view signature = "\x89PNG\r\n\x1A\n";
constexpr std::size_t chunkOverhead = 12;

/// The folders of the standard with the longest side of their pictures.
struct Size {
  std::string_view folder;
  std::uint32_t longestSide;
};
constexpr std::array sizes{Size{"normal", 128}, Size{"large", 256}, Size{"x-large", 512},
                           Size{"xx-large", 1024}};

/// Calls `take` with the type and the content of each chunk (PNG, third edition). Returns false if
/// the bytes are not chunks from beginning to end.
template <typename Take>
bool readChunks(std::string_view png, Take take) {
  if (!png.starts_with(signature)) return false;
  png.remove_prefix(signature.size());
  while (png.size() >= chunkOverhead) {
    const std::uint64_t length = bigEndian(png.substr(0, 4));
    if (length > png.size() - chunkOverhead) return false;
    const std::string_view type = png.substr(4, 4);
    take(type, png.substr(8, static_cast<std::size_t>(length)));
    if (type == "IEND") return true;
    png.remove_prefix(static_cast<std::size_t>(length) + chunkOverhead);
  }
  return false;
}

/// Returns the longest side in pixels, or 0 if the bytes are not the beginning of a PNG file.
std::uint64_t longestSideOf(std::string_view png) {
  const auto head = png.substr(std::min(signature.size(), png.size()));
  if (head.size() < 16 || head.substr(4, 4) != "IHDR") return 0;
  return std::max(bigEndian(head.substr(8, 4)), bigEndian(head.substr(12, 4)));
}

std::int64_t secondsOf(Instant time) {
  return std::chrono::floor<std::chrono::seconds>(time).time_since_epoch().count();
}

}  // namespace

std::string uriOf(std::string_view path) {
  constexpr std::string_view plain = "!$&'()*+,-./:=@_~";
  std::string uri = "file://";
  for (const char letter : path) {
    const bool isWord = (letter >= '0' && letter <= '9') || (letter >= 'A' && letter <= 'Z') ||
                        (letter >= 'a' && letter <= 'z');
    if (isWord || plain.find(letter) != std::string_view::npos) {
      uri += letter;
    } else {
      uri += fmt::format("%{:02X}", static_cast<unsigned char>(letter));
    }
  }
  return uri;
}

bool isOf(std::string_view png, const File& file) {
  // The size is optional in a thumbnail; the other two are not.
  int required = 0;
  bool isContradicted = false;
  const auto compare = [&](std::string_view value, const std::string& expected) {
    if (value != expected) isContradicted = true;
  };
  const bool isWhole = readChunks(png, [&](std::string_view type, std::string_view content) {
    if (type != "tEXt") return;
    const auto end = content.find('\0');
    if (end == std::string_view::npos) return;
    const std::string_view keyword = content.substr(0, end);
    const std::string_view value = content.substr(end + 1);
    if (keyword == "Thumb::URI") {
      compare(value, uriOf(file.path));
      required |= 1;
    } else if (keyword == "Thumb::MTime") {
      compare(value, std::to_string(secondsOf(file.modified)));
      required |= 2;
    } else if (keyword == "Thumb::Size") {
      compare(value, std::to_string(file.bytes));
    }
  });
  return isWhole && !isContradicted && required == 3;
}

std::optional<std::string> find(const std::string& folder, const File& file,
                                std::uint32_t leastSide) {
  const std::string name = md5Hex(uriOf(file.path)) + ".png";
  for (const Size& size : sizes) {
    if (size.longestSide < leastSide) continue;
    try {
      const auto opened = openFolder(folder + "/" + std::string{size.folder});
      std::string png = opened->readFile(name, maxPngBytes);
      // A small picture has a small thumbnail in every folder.
      if (isOf(png, file) && longestSideOf(png) >= leastSide) return png;
    } catch (const FileError&) {
      continue;
    }
  }
  return std::nullopt;
}

}  // namespace tavrix::DesktopThumbnails
