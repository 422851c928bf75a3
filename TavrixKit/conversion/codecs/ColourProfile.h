#pragma once

#include <string>

namespace tavrix {

/// A colour space as its code points tell it (ITU-T H.273).
struct CodedColours {
  int primaries = 2;  ///< 2 for unspecified
  int transfer = 2;

  friend bool operator==(const CodedColours&, const CodedColours&) = default;
};

/// An ICC profile for the colour space. Unspecified primaries and transfer are those of sRGB, and
/// so are the transfers of BT.601, BT.709 and BT.2020, by which pictures are shown everywhere.
/// Throws ConversionError with `unsupportedColour` for high dynamic range (PQ, HLG) and for what is
/// not known.
std::string profileOf(const CodedColours& colours);

/// The profile of an RGB space by its white and primaries as CIE x and y and one gamma (PNG's cHRM
/// and gAMA).
struct MeasuredColours {
  double whiteX = 0.3127, whiteY = 0.3290;
  double redX = 0.64, redY = 0.33;
  double greenX = 0.30, greenY = 0.60;
  double blueX = 0.15, blueY = 0.06;
  double gamma = 2.2;
};
std::string profileOf(const MeasuredColours& colours);

/// Whether the profile is one for pictures of so many channels, 1 grey or 3 RGB.
bool fitsChannels(const std::string& icc, int channels);

}  // namespace tavrix
