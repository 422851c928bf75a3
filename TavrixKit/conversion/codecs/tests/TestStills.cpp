#include "conversion/codecs/tests/TestStills.h"

#include <cstdio>
// jpeglib.h needs <cstdio> before it.
#include <jpeglib.h>
#include <libheif/heif.h>
#include <png.h>
#include <tiffio.h>
#include <webp/encode.h>

#include <cstdlib>
#include <memory>
#include <stdexcept>

#include "conversion/codecs/JpegEncoder.h"

namespace tavrix {
namespace {

std::vector<std::uint8_t> bytesOf(const TestPicture& picture) {
  return {picture.values.begin(), picture.values.end()};
}

void require(const heif_error& error) {
  if (error.code != heif_error_Ok) throw std::runtime_error{error.message};
}

}  // namespace

TestPicture TestPicture::make(int width, int height, int channels, int bits,
                              const std::function<int(int, int, int)>& value) {
  TestPicture picture{width, height, channels, bits};
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      for (int c = 0; c < channels; ++c)
        picture.values.push_back(static_cast<std::uint16_t>(value(x, y, c)));
    }
  }
  return picture;
}

TestPicture corners(int width, int height) {
  return TestPicture::make(width, height, 3, 8, [&](int x, int y, int c) {
    constexpr int colours[2][2][3] = {{{220, 30, 30}, {30, 200, 30}},
                                      {{30, 30, 220}, {240, 240, 240}}};
    return colours[y < height / 2 ? 0 : 1][x < width / 2 ? 0 : 1][c];
  });
}

std::string cornersOf(const TestPicture& picture) {
  std::string corners;
  for (const int field : {0, 1, 2, 3}) {
    const int x = picture.width / 4 + field % 2 * picture.width / 2;
    const int y = picture.height / 4 + field / 2 * picture.height / 2;
    const auto* const pixel =
        &picture.values[static_cast<std::size_t>((y * picture.width + x) * 3)];
    const bool isBright[] = {pixel[0] > 128, pixel[1] > 128, pixel[2] > 128};
    const bool isWhite = isBright[0] && isBright[1] && isBright[2];
    corners += isWhite ? 'w' : isBright[0] ? 'r' : isBright[1] ? 'g' : isBright[2] ? 'b' : '?';
  }
  return corners;
}

std::string exifOf(char orientation) {
  using namespace std::string_literals;
  return "II\x2A\0\x08\0\0\0\x02\0\x12\x01\x03\0\x01\0\0\0"s + orientation +
         "\0\0\0\x32\x01\x02\0\x14\0\0\0\x26\0\0\0\0\0\0\0"s + "2026:05:20 12:00:00\0"s;
}

std::string pngOf(const TestPicture& picture, const TestMetadata& metadata) {
  std::string file;
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  png_set_write_fn(
      png, &file,
      [](png_structp to, png_bytep bytes, std::size_t count) {
        static_cast<std::string*>(png_get_io_ptr(to))
            ->append(reinterpret_cast<const char*>(bytes), count);
      },
      nullptr);
  constexpr int types[] = {PNG_COLOR_TYPE_GRAY, PNG_COLOR_TYPE_GRAY_ALPHA, PNG_COLOR_TYPE_RGB,
                           PNG_COLOR_TYPE_RGB_ALPHA};
  png_set_IHDR(png, info, static_cast<png_uint_32>(picture.width),
               static_cast<png_uint_32>(picture.height), picture.bits > 8 ? 16 : 8,
               types[picture.channels - 1], PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
               PNG_FILTER_TYPE_DEFAULT);
  std::string exif = metadata.exif;
  if (!exif.empty())
    png_set_eXIf_1(png, info, static_cast<png_uint_32>(exif.size()),
                   reinterpret_cast<png_bytep>(exif.data()));
  std::string xmp = metadata.xmp;
  char key[] = "XML:com.adobe.xmp";
  png_text text{};
  text.compression = PNG_ITXT_COMPRESSION_NONE;
  text.key = key;
  text.text = xmp.data();
  if (!xmp.empty()) png_set_text(png, info, &text, 1);
  png_write_info(png, info);
  if (picture.bits > 8) png_set_swap(png);
  const std::vector<std::uint8_t> narrow = bytesOf(picture);
  const auto rowValues = static_cast<std::size_t>(picture.width * picture.channels);
  for (std::size_t y = 0; y < static_cast<std::size_t>(picture.height); ++y) {
    png_write_row(png, picture.bits > 8
                           ? reinterpret_cast<png_const_bytep>(&picture.values[y * rowValues])
                           : &narrow[y * rowValues]);
  }
  png_write_end(png, info);
  png_destroy_write_struct(&png, &info);
  return file;
}

std::string tiffOf(const TestPicture& picture, int orientation, int pages) {
  char path[] = "/tmp/tavrix-still-XXXXXX";
  const int descriptor = ::mkstemp(path);
  TIFF* const tiff = TIFFFdOpen(descriptor, path, "w");
  std::vector<std::uint8_t> bytes = bytesOf(picture);
  for (int page = 0; page < pages; ++page) {
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, picture.width);
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, picture.height);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, picture.channels);
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 8);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_LZW);
    TIFFSetField(tiff, TIFFTAG_ORIENTATION, orientation);
    TIFFSetField(tiff, TIFFTAG_DATETIME, "2026:05:20 12:00:00");
    for (int y = 0; y < picture.height; ++y) {
      TIFFWriteScanline(tiff,
                        &bytes[static_cast<std::size_t>(y * picture.width * picture.channels)],
                        static_cast<std::uint32_t>(y), 0);
    }
    TIFFWriteDirectory(tiff);
  }
  TIFFClose(tiff);
  std::string file;
  std::FILE* const in = std::fopen(path, "rb");
  for (int c = std::fgetc(in); c != EOF; c = std::fgetc(in)) file += static_cast<char>(c);
  std::fclose(in);
  std::remove(path);
  return file;
}

std::string jpegOf(const TestPicture& picture, const TestMetadata& metadata) {
  StringSink sink;
  JpegEncoder encoder{sink};
  encoder.begin({static_cast<std::uint32_t>(picture.width),
                 static_cast<std::uint32_t>(picture.height), picture.channels, 92, false},
                {metadata.exif, metadata.xmp, metadata.icc});
  const std::vector<std::uint8_t> bytes = bytesOf(picture);
  for (int y = 0; y < picture.height; ++y)
    encoder.write(&bytes[static_cast<std::size_t>(y * picture.width * picture.channels)]);
  encoder.finish();
  return sink.take();
}

std::string webpOf(const TestPicture& picture) {
  const std::vector<std::uint8_t> bytes = bytesOf(picture);
  std::uint8_t* out = nullptr;
  const std::size_t size = picture.channels == 4
                               ? WebPEncodeLosslessRGBA(bytes.data(), picture.width, picture.height,
                                                        picture.width * 4, &out)
                               : WebPEncodeLosslessRGB(bytes.data(), picture.width, picture.height,
                                                       picture.width * 3, &out);
  std::string file{reinterpret_cast<const char*>(out), size};
  WebPFree(out);
  return file;
}

std::string withStereoPair(std::string heic) {
  const auto number = [&](std::size_t at) {
    std::uint32_t value = 0;
    for (int i = 0; i < 4; ++i) value = value << 8U | static_cast<std::uint8_t>(heic.at(at++));
    return value;
  };
  const auto add = [&](std::size_t at, std::uint32_t more) {
    const std::uint32_t value = number(at) + more;
    for (const unsigned shift : {24U, 16U, 8U, 0U})
      heic.at(at++) = static_cast<char>(value >> shift);
  };
  constexpr std::string_view group{
      "\0\0\0\x24grpl\0\0\0\x1Cster\0\0\0\0\0\0\0\x09\0\0\0\x02\0\0\0\x01\0\0\0\x02", 36};
  const std::size_t meta = heic.find("meta") - 4;
  const std::size_t end = meta + number(meta);
  // The bytes of the pictures follow the box and move with its end.
  const std::size_t locations = heic.find("iloc") + 4;
  constexpr std::size_t bytesOfAnItem = 18;
  EXPECT_EQ(heic.substr(locations, 6), std::string("\0\0\0\0\x44\x40", 6)) << "another form";
  const std::size_t items = static_cast<std::uint8_t>(heic.at(locations + 7));
  for (std::size_t i = 0; i < items; ++i) add(locations + 8 + i * bytesOfAnItem + 4, group.size());
  add(meta, group.size());
  return heic.insert(end, group);
}

std::string heicOf(const TestPicture& picture, const TestMetadata& metadata, int pictures) {
  const std::unique_ptr<heif_context, void (*)(heif_context*)> context{heif_context_alloc(),
                                                                       heif_context_free};
  heif_encoder* encoder = nullptr;
  require(heif_context_get_encoder_for_format(context.get(), heif_compression_HEVC, &encoder));
  heif_encoder_set_lossy_quality(encoder, 95);
  heif_image* image = nullptr;
  require(heif_image_create(
      picture.width, picture.height, heif_colorspace_RGB,
      picture.bits > 8 ? heif_chroma_interleaved_RRGGBB_LE : heif_chroma_interleaved_RGB, &image));
  require(heif_image_add_plane(image, heif_channel_interleaved, picture.width, picture.height,
                               picture.bits));
  int stride = 0;
  std::uint8_t* const plane = heif_image_get_plane(image, heif_channel_interleaved, &stride);
  const int rowValues = picture.width * 3;
  for (int y = 0; y < picture.height; ++y) {
    for (int i = 0; i < rowValues; ++i) {
      const std::uint16_t value = picture.values[static_cast<std::size_t>(y * rowValues + i)];
      std::uint8_t* const row = plane + std::ptrdiff_t{y} * stride;
      if (picture.bits > 8) {
        row[2 * i] = static_cast<std::uint8_t>(value & 0xFFU);
        row[2 * i + 1] = static_cast<std::uint8_t>(value >> 8U);
      } else {
        row[i] = static_cast<std::uint8_t>(value);
      }
    }
  }
  if (!metadata.icc.empty())
    require(
        heif_image_set_raw_color_profile(image, "prof", metadata.icc.data(), metadata.icc.size()));
  heif_image_handle* handle = nullptr;
  require(heif_context_encode_image(context.get(), image, encoder, nullptr, &handle));
  for (int i = 1; i < pictures; ++i)
    require(heif_context_encode_image(context.get(), image, encoder, nullptr, nullptr));
  if (!metadata.exif.empty())
    require(heif_context_add_exif_metadata(context.get(), handle, metadata.exif.data(),
                                           static_cast<int>(metadata.exif.size())));
  if (!metadata.xmp.empty())
    require(heif_context_add_XMP_metadata(context.get(), handle, metadata.xmp.data(),
                                          static_cast<int>(metadata.xmp.size())));
  std::string file;
  heif_writer writer{1, [](heif_context*, const void* data, std::size_t size, void* to) {
                       static_cast<std::string*>(to)->assign(static_cast<const char*>(data), size);
                       return heif_error{heif_error_Ok, heif_suberror_Unspecified, ""};
                     }};
  require(heif_context_write(context.get(), &writer, &file));
  heif_image_handle_release(handle);
  heif_image_release(image);
  heif_encoder_release(encoder);
  return file;
}

TestPicture decodeJpeg(const std::string& file) {
  jpeg_decompress_struct info{};
  jpeg_error_mgr errors{};
  info.err = jpeg_std_error(&errors);
  jpeg_create_decompress(&info);
  jpeg_mem_src(&info, reinterpret_cast<const unsigned char*>(file.data()), file.size());
  jpeg_read_header(&info, TRUE);
  jpeg_start_decompress(&info);
  TestPicture picture{static_cast<int>(info.output_width), static_cast<int>(info.output_height),
                      info.output_components, 8};
  std::vector<std::uint8_t> row(info.output_width *
                                static_cast<std::size_t>(info.output_components));
  while (info.output_scanline < info.output_height) {
    JSAMPROW pixels = row.data();
    jpeg_read_scanlines(&info, &pixels, 1);
    picture.values.insert(picture.values.end(), row.begin(), row.end());
  }
  jpeg_destroy_decompress(&info);
  return picture;
}

}  // namespace tavrix
