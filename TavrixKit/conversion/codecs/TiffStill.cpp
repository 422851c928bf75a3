#include <tiffio.h>

#include <algorithm>
#include <bit>
#include <cstring>

#include "conversion/codecs/ColourProfile.h"
#include "conversion/codecs/DecodedStill.h"
#include "conversion/codecs/TiffExif.h"
#include "transfer/MediaConverter.h"

namespace tavrix {
namespace {

/// The file in memory, in the form that the library requires.
struct TiffSource {
  std::span<const char> bytes;
  toff_t at = 0;

  static TiffSource& of(thandle_t handle) { return *static_cast<TiffSource*>(handle); }
  static tmsize_t read(thandle_t handle, void* to, tmsize_t count) {
    TiffSource& self = of(handle);
    const toff_t rest = self.bytes.size() - std::min<toff_t>(self.at, self.bytes.size());
    const auto taken = std::min<toff_t>(rest, static_cast<toff_t>(std::max<tmsize_t>(count, 0)));
    std::memcpy(to, self.bytes.data() + self.at, taken);
    self.at += taken;
    return static_cast<tmsize_t>(taken);
  }
  static tmsize_t write(thandle_t, void*, tmsize_t) { return 0; }
  static toff_t seek(thandle_t handle, toff_t offset, int whence) {
    TiffSource& self = of(handle);
    const toff_t base = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? self.at : self.bytes.size();
    self.at = std::min<toff_t>(base + offset, self.bytes.size());
    return self.at;
  }
  static int close(thandle_t) { return 0; }
  static toff_t size(thandle_t handle) { return of(handle).bytes.size(); }
};

/// An open file and the bytes that it reads.
struct OpenTiff {
  TiffSource source;
  TIFF* tiff = nullptr;

  explicit OpenTiff(std::span<const char> bytes) : source{bytes} {
    TIFFSetErrorHandler(nullptr);
    TIFFSetWarningHandler(nullptr);
    tiff = TIFFClientOpen("", "rm", &source, TiffSource::read, TiffSource::write, TiffSource::seek,
                          TiffSource::close, TiffSource::size, nullptr, nullptr);
    if (tiff == nullptr) throw ConversionError{ConversionFailure::damagedInput};
  }
  ~OpenTiff() { TIFFClose(tiff); }
  OpenTiff(const OpenTiff&) = delete;
  OpenTiff& operator=(const OpenTiff&) = delete;

  std::uint16_t number(std::uint32_t tag) const {
    std::uint16_t value = 0;
    TIFFGetFieldDefaulted(tiff, tag, &value);
    return value;
  }
  std::string bytes(std::uint32_t tag) const {
    std::uint32_t count = 0;
    const void* value = nullptr;
    if (TIFFGetField(tiff, tag, &count, &value) == 0 || value == nullptr) return {};
    if (count > StillLimits::maxMetadata)
      throw ConversionError{ConversionFailure::metadataTooLarge};
    return {static_cast<const char*>(value), count};
  }
  /// Returns the meaning of the values beyond the colours; EXTRASAMPLE_UNSPECIFIED if there are
  /// none.
  std::uint16_t extraSample() const {
    std::uint16_t count = 0;
    const std::uint16_t* kinds = nullptr;
    TIFFGetFieldDefaulted(tiff, TIFFTAG_EXTRASAMPLES, &count, &kinds);
    return count == 0 ? EXTRASAMPLE_UNSPECIFIED : kinds[0];
  }
};
using SharedTiff = std::shared_ptr<OpenTiff>;

/// Rows of a file of strips, in their stored form.
class ScanLines : public PixelRows {
 public:
  ScanLines(SharedTiff file, int channelCount) : file_(std::move(file)) {
    channels = channelCount;
    bits = file_->number(TIFFTAG_BITSPERSAMPLE);
    buffer_.resize(static_cast<std::size_t>(TIFFScanlineSize64(file_->tiff)));
  }
  const std::byte* row(std::uint32_t y) override {
    if (TIFFReadScanline(file_->tiff, buffer_.data(), y) != 1)
      throw ConversionError{ConversionFailure::damagedInput};
    return buffer_.data();
  }

 private:
  SharedTiff file_;
  std::vector<std::byte> buffer_;
};

/// The library's own conversion of all other files to 8 bits and opacity, the whole picture at
/// once.
class Raster : public PixelRows {
 public:
  Raster(const OpenTiff& file, std::uint32_t rasterWidth, std::uint32_t rasterHeight)
      : pixels_(std::size_t{rasterWidth} * rasterHeight) {
    channels = 4;
    isPremultiplied = true;
    anyOrder = true;
    TIFFRGBAImage image{};
    char message[1024];
    if (TIFFRGBAImageBegin(&image, file.tiff, 1, message) != 1)
      throw ConversionError{ConversionFailure::unsupported};
    // The orientation is applied later, in the same way for all formats.
    image.orientation = image.req_orientation = ORIENTATION_TOPLEFT;
    const int isRead = TIFFRGBAImageGet(&image, pixels_.data(), rasterWidth, rasterHeight);
    TIFFRGBAImageEnd(&image);
    if (isRead != 1) throw ConversionError{ConversionFailure::damagedInput};
    row_.resize(std::size_t{rasterWidth} * 4);
  }
  const std::byte* row(std::uint32_t y) override {
    const std::uint32_t* from = pixels_.data() + std::size_t{y} * width;
    for (std::size_t i = 0; i < row_.size(); ++i) {
      row_[i] = static_cast<std::byte>(from[i / 4] >> (8U * (i % 4)));
    }
    return row_.data();
  }

 private:
  std::vector<std::uint32_t> pixels_;
  std::vector<std::byte> row_;
};

/// Returns the number of values per pixel if rows can be used in their stored form; else nullopt.
std::optional<int> plainChannels(const OpenTiff& file) {
  const int samples = file.number(TIFFTAG_SAMPLESPERPIXEL);
  const int bits = file.number(TIFFTAG_BITSPERSAMPLE);
  const int photometric = file.number(TIFFTAG_PHOTOMETRIC);
  const int colours = photometric == PHOTOMETRIC_RGB ? 3 : 1;
  const bool isPlain = TIFFIsTiled(file.tiff) == 0 && (bits == 8 || bits == 16) &&
                       file.number(TIFFTAG_SAMPLEFORMAT) == SAMPLEFORMAT_UINT &&
                       file.number(TIFFTAG_PLANARCONFIG) == PLANARCONFIG_CONTIG &&
                       (photometric == PHOTOMETRIC_RGB || photometric == PHOTOMETRIC_MINISBLACK);
  if (!isPlain || (samples != colours && samples != colours + 1)) return std::nullopt;
  if (samples > colours && file.extraSample() == EXTRASAMPLE_UNSPECIFIED) return std::nullopt;
  return samples;
}

std::unique_ptr<PixelRows> rowsOf(const SharedTiff& file, std::uint32_t width,
                                  std::uint32_t height) {
  std::unique_ptr<PixelRows> rows;
  if (const auto channels = plainChannels(*file)) {
    rows = std::make_unique<ScanLines>(file, *channels);
    rows->isPremultiplied = file->extraSample() == EXTRASAMPLE_ASSOCALPHA;
  } else {
    const int photometric = file->number(TIFFTAG_PHOTOMETRIC);
    const bool isKnown = photometric <= PHOTOMETRIC_PALETTE || photometric == PHOTOMETRIC_YCBCR;
    if (!isKnown || file->number(TIFFTAG_BITSPERSAMPLE) > 8)
      throw ConversionError{ConversionFailure::unsupportedColour};
    rows = std::make_unique<Raster>(*file, width, height);
  }
  rows->width = width;
  rows->height = height;
  return rows;
}

}  // namespace

DecodedStill decodeTiff(std::span<const char> source, const StillReading& reading) {
  if (isRawTiff(source)) throw ConversionError{ConversionFailure::rawPicture};
  const auto file = std::make_shared<OpenTiff>(source);
  if (reading.rejectsSeveral && TIFFNumberOfDirectories(file->tiff) > 1)
    throw ConversionError{ConversionFailure::severalPictures};
  TIFFSetDirectory(file->tiff, 0);
  DecodedStill still;
  TIFFGetField(file->tiff, TIFFTAG_IMAGEWIDTH, &still.width);
  TIFFGetField(file->tiff, TIFFTAG_IMAGELENGTH, &still.height);
  checkStillSize(still.width, still.height);
  still.metadata.exif = exifOfTiff(source);
  still.metadata.xmp = file->bytes(TIFFTAG_XMLPACKET);
  still.metadata.icc = file->bytes(TIFFTAG_ICCPROFILE);
  const int orientation = file->number(TIFFTAG_ORIENTATION);
  still.orientation = orientation >= 1 && orientation <= 8 ? orientation : 1;
  still.rows = rowsOf(file, still.width, still.height);
  return still;
}

}  // namespace tavrix
