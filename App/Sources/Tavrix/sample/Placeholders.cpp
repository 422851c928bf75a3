#include "sample/Placeholders.h"

#include <fmt/format.h>

#include <cstdint>

namespace tavrix {
namespace {

std::string box(std::string_view type, std::string_view content) {
  const auto size = static_cast<std::uint32_t>(8 + content.size());
  std::string bytes;
  for (const unsigned shift : {24U, 16U, 8U, 0U}) {
    bytes += static_cast<char>(static_cast<unsigned char>(size >> shift));
  }
  bytes += type;
  bytes += content;
  return bytes;
}

}  // namespace

std::string placeholderMovie(std::string_view fileName, std::size_t mediaBytes) {
  using namespace std::string_view_literals;
  return box("ftyp", "qt  \0\0\0\0qt  "sv) +
         box("free", fmt::format("Placeholder for {}: this file holds no film.", fileName)) +
         box("mdat", std::string(mediaBytes, '\0'));
}

std::string placeholderSidecar() {
  return R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<dict>
	<key>adjustmentFormatIdentifier</key>
	<string>tavrix.sample</string>
	<key>adjustmentFormatVersion</key>
	<string>1.0</string>
	<key>adjustmentData</key>
	<data></data>
</dict>
</plist>
)";
}

}  // namespace tavrix
