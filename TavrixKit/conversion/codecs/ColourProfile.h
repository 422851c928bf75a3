#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tavrix {

/// A colour space by its code points (ITU-T H.273).
struct CodedColours {
  int primaries = 2;  ///< 2 for unspecified
  int transfer = 2;

  friend bool operator==(const CodedColours&, const CodedColours&) = default;
};

/// Returns an ICC profile for the colour space. Unspecified primaries and transfer are treated as
/// those of sRGB, and so are the transfer functions of BT.601, BT.709 and BT.2020, because viewers
/// display such pictures as sRGB. Throws ConversionError with `unsupportedColour` for high dynamic
/// range (PQ, HLG) and for unknown code points.
std::string profileOf(const CodedColours& colours);

/// An RGB space by its white point and primaries as CIE x and y and a single gamma (PNG's cHRM and
/// gAMA).
struct MeasuredColours {
  double whiteX = 0.3127, whiteY = 0.3290;
  double redX = 0.64, redY = 0.33;
  double greenX = 0.30, greenY = 0.60;
  double blueX = 0.15, blueY = 0.06;
  double gamma = 2.2;
};
std::string profileOf(const MeasuredColours& colours);

/// Returns true if the profile is for pictures with this number of channels: 1 for grey, 3 for RGB.
bool fitsChannels(const std::string& icc, int channels);

/// Converts pixels of 1 (grey) or 3 channels to sRGB, three values a pixel. Returns nullopt if the
/// profile is unusable or for pictures with another number of channels.
std::optional<std::vector<std::uint8_t>> inSrgb(std::span<const std::uint8_t> values, int channels,
                                                const std::string& icc);

}  // namespace tavrix
