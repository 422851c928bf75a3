#pragma once

#include <cstdint>
#include <string_view>

namespace tavrix {

/// Returns the unsigned number in `bytes` (at most 8), most significant byte first.
constexpr std::uint64_t bigEndian(std::string_view bytes) {
  std::uint64_t value = 0;
  for (const char byte : bytes) value = value << 8U | static_cast<unsigned char>(byte);
  return value;
}

/// Returns the unsigned number in `bytes` (at most 8), least significant byte first.
constexpr std::uint64_t littleEndian(std::string_view bytes) {
  std::uint64_t value = 0;
  for (std::size_t i = bytes.size(); i > 0; --i) {
    value = value << 8U | static_cast<unsigned char>(bytes[i - 1]);
  }
  return value;
}

/// Reads big-endian numbers from a sequence of bytes, one after another. Past the end it returns
/// zeros, and hasFailed() returns true.
class ByteCursor {
 public:
  explicit ByteCursor(std::string_view bytes) : rest_(bytes) {}

  std::uint64_t number(std::size_t bytes) { return bigEndian(take(bytes)); }
  std::string_view take(std::size_t bytes) {
    if (bytes > rest_.size()) {
      hasFailed_ = true;
      rest_ = {};
      return {};
    }
    const std::string_view taken = rest_.substr(0, bytes);
    rest_.remove_prefix(bytes);
    return taken;
  }
  bool hasFailed() const { return hasFailed_; }
  bool isAtEnd() const { return rest_.empty(); }

 private:
  std::string_view rest_;
  bool hasFailed_ = false;
};

}  // namespace tavrix
