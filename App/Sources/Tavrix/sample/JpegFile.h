#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>

namespace tavrix {

/// Fills one row of a picture: 3 bytes per pixel, in the order red, green, blue.
using RowSource = std::function<void(int y, std::span<std::uint8_t> pixels)>;

/// Returns a baseline JPEG file of the given size in pixels. `exif` is the content of its APP1
/// segment; if it is empty, the file begins with a JFIF header instead.
std::string encodeJpeg(int width, int height, const RowSource& rows, const std::string& exif);

}  // namespace tavrix
