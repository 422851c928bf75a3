#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Writes boxes of ISO base media and QuickTime files (ISO/IEC 14496-12, 4.2).
namespace tavrix::isobox {

/// Returns the low `bytes` bytes of a number, most significant byte first.
inline std::string number(std::uint64_t value, unsigned bytes) {
  std::string text;
  for (unsigned shift = bytes * 8; shift > 0; shift -= 8)
    text += static_cast<char>(static_cast<unsigned char>(value >> (shift - 8)));
  return text;
}

/// Returns a box of less than 4 GiB.
inline std::string box(std::string_view type, std::string_view content) {
  return number(content.size() + 8, 4).append(type).append(content);
}

/// Returns a box whose content begins with version and flags.
inline std::string fullBox(std::string_view type, std::uint64_t versionAndFlags,
                           std::string_view content) {
  return box(type, number(versionAndFlags, 4).append(content));
}

/// Returns the head of a box with `contentBytes` bytes of content.
inline std::string boxHead(std::string_view type, std::uint64_t contentBytes) {
  return number(contentBytes + 8, 4).append(type);
}

}  // namespace tavrix::isobox
