#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "device/metadata/tests/support/MediaBytes.h"

namespace tavrix::testbytes {

/// Returns a PNG file of `side` × 1 pixels as far as its chunks are concerned, with the texts
/// "KEYWORD=VALUE".
inline std::string desktopPng(std::uint64_t side, const std::vector<std::string>& texts) {
  const auto chunk = [](const std::string& type, const std::string& content) {
    return number(content.size(), 4) + type + content + "CRC!";
  };
  std::string bytes = "\x89PNG\r\n\x1A\n" + chunk("IHDR", number(side, 4) + number(1, 4) + "12345");
  for (std::string text : texts) {
    text[text.find('=')] = '\0';
    bytes += chunk("tEXt", text);
  }
  return bytes + chunk("IDAT", "pixels") + chunk("IEND", "");
}

}  // namespace tavrix::testbytes
