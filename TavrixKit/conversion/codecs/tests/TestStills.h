#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tavrix {

/// Pixels for a test: 8 bits, or 16 with the values of `bits` bits.
struct TestPicture {
  int width = 0;
  int height = 0;
  int channels = 3;
  int bits = 8;
  std::vector<std::uint16_t> values{};

  static TestPicture make(int width, int height, int channels, int bits,
                          const std::function<int(int x, int y, int channel)>& value);
};

struct TestMetadata {
  std::string exif{};
  std::string xmp{};
  std::string icc{};
};

/// Return files written with the libraries that the converter uses for reading.
std::string pngOf(const TestPicture& picture, const TestMetadata& metadata = {});
std::string tiffOf(const TestPicture& picture, int orientation = 1, int pages = 1);
std::string webpOf(const TestPicture& picture);
/// Returns a file with `pictures` identical pictures.
std::string heicOf(const TestPicture& picture, const TestMetadata& metadata = {}, int pictures = 1);

/// Decodes a JPEG file to rows of 1 or 3 channels.
TestPicture decodeJpeg(const std::string& file);

}  // namespace tavrix
