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

/// Returns a picture that is red at the top left, green at the top right, blue at the bottom left
/// and white at the bottom right.
TestPicture corners(int width = 64, int height = 48);
/// Returns the colours in the middle of the quarters, row by row: r, g, b or w; '?' for none of
/// these.
std::string cornersOf(const TestPicture& picture);
/// The quarters of corners() after each Exif orientation, 1 to 8, was applied (Exif 2.32, 4.6.4:
/// the positions of the stored first row and column).
inline constexpr const char* uprightCorners[] = {"rgbw", "grwb", "wbgr", "bwrg",
                                                 "rbgw", "brwg", "wgbr", "gwrb"};
/// Returns an Exif block with orientation and a date, as a phone writes them.
std::string exifOf(char orientation);

/// Return files written with the libraries that the converter uses for reading.
std::string pngOf(const TestPicture& picture, const TestMetadata& metadata = {});
std::string tiffOf(const TestPicture& picture, int orientation = 1, int pages = 1);
std::string jpegOf(const TestPicture& picture, const TestMetadata& metadata = {});
std::string webpOf(const TestPicture& picture);
/// Makes the first two pictures of a file of heicOf() a stereo pair. Their sides must be even.
std::string withStereoPair(std::string heic);
/// Returns a file with `pictures` identical pictures.
std::string heicOf(const TestPicture& picture, const TestMetadata& metadata = {}, int pictures = 1);

/// Decodes a JPEG file to rows of 1 or 3 channels.
TestPicture decodeJpeg(const std::string& file);

}  // namespace tavrix
