#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tavrix {

/// Reads fields of an Exif block for tests. Throws std::out_of_range for an access out of range.
class ExifReader {
 public:
  explicit ExifReader(const std::string& segment) : tiff_(segment.substr(6)) {}

  std::uint32_t mainDirectory() const { return number(4, 4); }
  /// Returns the offset of the directory to which `tag` in the main directory points.
  std::optional<std::uint32_t> subdirectory(std::uint16_t tag) const {
    const auto entry = find(mainDirectory(), tag);
    return entry ? std::optional{number(*entry + 8, 4)} : std::nullopt;
  }
  /// Returns the text of an ASCII field without its terminating NUL.
  std::string text(std::uint32_t directory, std::uint16_t tag) const {
    const std::uint32_t entry = find(directory, tag).value();
    const std::uint32_t count = number(entry + 4, 4);
    return tiff_.substr(count <= 4 ? entry + 8 : number(entry + 8, 4), count - 1);
  }
  /// Returns degrees computed from three rationals: degrees, minutes, seconds.
  double degrees(std::uint32_t directory, std::uint16_t tag) const {
    const std::uint32_t at = number(find(directory, tag).value() + 8, 4);
    const auto rational = [&](std::uint32_t from) {
      return double{number(from, 4) * 1.0} / number(from + 4, 4);
    };
    return rational(at) + rational(at + 8) / 60 + rational(at + 16) / 3600;
  }
  /// Returns the tags of a directory in stored order.
  std::vector<std::uint32_t> tags(std::uint32_t directory) const {
    std::vector<std::uint32_t> tags;
    tags.reserve(number(directory, 2));
    for (std::uint32_t i = 0; i < number(directory, 2); ++i)
      tags.push_back(number(directory + 2 + i * 12, 2));
    return tags;
  }

 private:
  std::uint32_t number(std::size_t at, int bytes) const {
    std::uint32_t value = 0;
    for (int i = 0; i < bytes; ++i) {
      value = value << 8U | static_cast<unsigned char>(tiff_.at(at + static_cast<std::size_t>(i)));
    }
    return value;
  }
  std::optional<std::uint32_t> find(std::uint32_t directory, std::uint16_t tag) const {
    for (std::uint32_t i = 0; i < number(directory, 2); ++i) {
      if (number(directory + 2 + i * 12, 2) == tag) return directory + 2 + i * 12;
    }
    return std::nullopt;
  }

  std::string tiff_;
};

}  // namespace tavrix
