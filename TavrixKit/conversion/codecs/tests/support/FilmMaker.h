#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "conversion/codecs/Av.h"

namespace tavrix::testfilms {

/// A small film for a test. Its pictures have four fields of different colours, which show whether
/// it was turned. From `flashAt` on all fields are white, and the sound, silent before, begins.
struct FilmRecipe {
  const char* container = "mov";
  const char* encoder = "libx265";
  AVPixelFormat pixels = AV_PIX_FMT_YUV420P;
  int width = 320;
  int height = 240;
  /// Times of the pictures, in 600ths of a second; the last picture lasts as long as the one before
  /// it.
  std::vector<std::int64_t> times = everyTwentieth(30);
  std::int64_t flashAt = 300;
  int clockwise = 0;  ///< degrees by which players turn the pictures
  AVColorTransferCharacteristic transfer = AVCOL_TRC_BT709;
  AVColorPrimaries primaries = AVCOL_PRI_BT709;
  AVColorSpace matrix = AVCOL_SPC_BT709;
  std::vector<const char*> soundEncoders = {"aac"};
  bool hasCapture = true;   ///< date, place and camera, as a phone writes them
  bool hasPlace = false;    ///< the place as in MP4 files of other makers, instead of those
  AVRational aspect{0, 1};  ///< width by height of a pixel

  static std::vector<std::int64_t> everyTwentieth(int count) {
    std::vector<std::int64_t> times;
    for (int i = 0; i < count; ++i) times.push_back(20 * i);
    return times;
  }
};

/// Writes the film. Throws if the libraries fail.
void makeFilm(const std::string& path, const FilmRecipe& recipe);

/// The properties of a film that tests examine.
struct SeenFilm {
  std::string codec;
  int width = 0;  ///< as stored
  int height = 0;
  AVPixelFormat pixels = AV_PIX_FMT_NONE;
  AVColorTransferCharacteristic transfer = AVCOL_TRC_UNSPECIFIED;
  AVColorPrimaries primaries = AVCOL_PRI_UNSPECIFIED;
  AVColorSpace matrix = AVCOL_SPC_UNSPECIFIED;
  int clockwise = 0;
  std::vector<double> times;             ///< of the pictures, in seconds
  double seconds = 0;                    ///< of the picture track
  std::vector<std::vector<int>> fields;  ///< of the first picture: Y, U and V of the four fields
  double flash = -1;                     ///< when the pictures turn white, in seconds
  std::vector<std::string> sounds;       ///< codecs
  double beep = -1;                      ///< when the first sound track becomes loud, in seconds
};

SeenFilm seen(const std::string& path);

}  // namespace tavrix::testfilms
