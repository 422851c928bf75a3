#include <gmock/gmock.h>
#include <zlib.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>

#include "conversion/ProcessConverter.h"
#include "conversion/codecs/HeifReferences.h"
#include "conversion/codecs/HeifTiles.h"
#include "conversion/codecs/tests/TestStills.h"
#include "conversion/codecs/tests/support/TiledHeic.h"
#include "foundation/Sanitizers.h"
#include "foundation/tests/support/TemporaryFolder.h"
#include "transfer/tests/TestLibrary.h"

namespace tavrix {
namespace {

using namespace std::string_literals;
using testing::HasSubstr;

TestPicture noise(int side) {
  return TestPicture::make(side, side, 3, 8, [](int x, int y, int c) {
    return (x * 7919 + y * 104729 + c * 31 + x * y * 13) % 256;
  });
}

/// Returns the file with the last third of its content zeroed, as by a bad sector.
std::string withHole(std::string file) {
  std::fill(file.begin() + static_cast<std::ptrdiff_t>(file.size() * 2 / 3), file.end(), '\0');
  return file;
}

struct StillConversion : testing::Test {
  std::string convert(const std::string& source, double quality = 0.95,
                      std::optional<ConversionLimits> limits = {}) {
    folder.write("in.part", source);
    std::filesystem::remove(folder / "out.part");
    ProcessConverter converter{TAVRIX_CONVERT_PROGRAM, limits};
    converter.convert(assetOf("100APPLE/IMG_1.PNG"), planned_conversion::Jpeg{quality},
                      *openFolder(folder.path()), "in.part", "out.part", {}, {});
    return folder.read("out.part");
  }
  std::string failureOf(const std::string& source, std::optional<ConversionLimits> limits = {}) {
    try {
      convert(source, 0.95, limits);
    } catch (const ConversionError& error) {
      return std::string{textOf(error.failure())};
    }
    return "none";
  }

  TemporaryFolder folder;
};

TEST_F(StillConversion, everyOrientation_isTurnedUpright) {
  for (int orientation = 1; orientation <= 8; ++orientation) {
    const bool isTurned = orientation >= 5;
    for (const std::string& source : {pngOf(corners(), {exifOf(static_cast<char>(orientation))}),
                                      tiffOf(corners(), orientation)}) {
      const std::string jpeg = convert(source);
      const TestPicture picture = decodeJpeg(jpeg);
      EXPECT_EQ(picture.width, isTurned ? 48 : 64);
      EXPECT_EQ(picture.height, isTurned ? 64 : 48);
      EXPECT_EQ(cornersOf(picture), uprightCorners[orientation - 1]) << orientation;
      EXPECT_THAT(jpeg, HasSubstr("2026:05:20 12:00:00"));
    }
  }
}

TEST_F(StillConversion, heic_isNotTurnedByExif_andKeepsItsMetadata) {
  const TestMetadata metadata{exifOf(6), "<x tiff:Orientation=\"6\"/>", {}};
  const std::string jpeg = convert(heicOf(corners(), metadata));
  const TestPicture picture = decodeJpeg(jpeg);
  EXPECT_EQ(picture.width, 64);
  EXPECT_EQ(cornersOf(picture), "rgbw");
  EXPECT_THAT(jpeg, HasSubstr("Exif\0\0"s + exifOf(1)));
  EXPECT_THAT(jpeg, HasSubstr("<x tiff:Orientation=\"1\"/>"));
}

TEST_F(StillConversion, heicOfTiles_isPutTogetherAndTurned) {
  // Each colour has a slope of its own; the last tiles extend beyond the picture.
  constexpr int width = 150;
  constexpr int height = 100;
  const auto slope = [](int x, int y, int c) { return c == 0 ? x : c == 1 ? 2 * y : 200 - x / 2; };
  for (int turns = 0; turns < 4; ++turns) {
    const std::string source = tiledHeicOf(TestPicture::make(width, height, 3, 8, slope), turns);
    ASSERT_TRUE(readHeifTiles(source)) << turns;
    const TestPicture picture = decodeJpeg(convert(source));
    ASSERT_EQ(picture.width, turns % 2 == 0 ? width : height);
    ASSERT_EQ(picture.height, turns % 2 == 0 ? height : width);
    for (int i = 0; i < width * height; ++i) {
      const int x = i % width;
      const int y = i / width;
      const int columns[] = {x, y, width - 1 - x, height - 1 - y};
      const int rows[] = {y, width - 1 - x, height - 1 - y, x};
      const int at = (rows[turns] * picture.width + columns[turns]) * 3;
      for (int c = 0; c < 3; ++c)
        ASSERT_NEAR(picture.values[static_cast<std::size_t>(at + c)], slope(x, y, c), 12)
            << turns << ' ' << x << ' ' << y;
    }
  }
}

TEST_F(StillConversion, tilesThatAreUnusual_areLeftToTheLibrary) {
  const std::string usual = tiledHeicOf(corners(128, 64), 1);
  EXPECT_TRUE(readHeifTiles(usual));
  const std::pair<std::string, std::string> changes[] = {
      {"irot", "imir"}, {"dimg", "xxxx"}, {"grid", "iden"}, {"hvcC", "xxxx"}, {"idat", "xxxx"}};
  for (const auto& [from, to] : changes) {
    std::string other = usual;
    other.replace(other.find(from), 4, to);
    EXPECT_FALSE(readHeifTiles(other)) << to;
  }
  for (std::size_t length = 0; length < usual.size(); length += 3)
    EXPECT_FALSE(readHeifTiles({usual.data(), length})) << length;
}

TEST_F(StillConversion, transparency_liesOnWhite) {
  // Opaque, half and fully transparent black.
  const auto picture = TestPicture::make(48, 16, 4, 8, [](int x, int, int c) {
    return c < 3 ? 0 : x < 16 ? 255 : x < 32 ? 128 : 0;
  });
  for (const std::string& source : {pngOf(picture), webpOf(picture)}) {
    const TestPicture result = decodeJpeg(convert(source));
    EXPECT_NEAR(result.values[3 * (8 * 48 + 8)], 0, 3);
    EXPECT_NEAR(result.values[3 * (8 * 48 + 24)], 127, 3);
    EXPECT_NEAR(result.values[3 * (8 * 48 + 40)], 255, 3);
  }
}

TEST_F(StillConversion, deepColours_keepTheirMeans) {
  // A ramp of ten bits in which eight bits would show steps.
  const auto ramp = [](int bits) {
    return TestPicture::make(256, 64, 3, bits,
                             [bits](int x, int, int) { return (400 + x / 4) << (bits - 10); });
  };
  for (const std::string& source : {pngOf(ramp(16)), heicOf(ramp(10))}) {
    const TestPicture result = decodeJpeg(convert(source, 1));
    for (std::size_t x = 8; x < 248; x += 8) {
      double mean = 0;
      for (std::size_t y = 0; y < 64; ++y)
        for (std::size_t dx = 0; dx < 8; ++dx)
          mean += result.values[3 * (y * 256 + x + dx)] / 512.0;
      EXPECT_NEAR(mean, (400 + (static_cast<double>(x) + 3.5) / 4) * 255 / 1023, 0.6) << x;
    }
  }
}

TEST_F(StillConversion, quality_isHonoured) {
  const std::string source = pngOf(noise(96));
  std::size_t smaller = 0;
  for (const double quality : {0.0, 0.3, 0.85, 1.0}) {
    const std::size_t size = convert(source, quality).size();
    EXPECT_GT(size, smaller) << quality;
    smaller = size;
  }
}

TEST_F(StillConversion, whatWouldLose_orIsNoPicture_isKept) {
  const std::string png = pngOf(corners());
  const std::string heic = heicOf(corners());
  std::string bomb = png;
  // 60000 by 60000 pixels; the checksum does not matter.
  bomb.replace(16, 8, "\0\0\xEA\x60\0\0\xEA\x60"s);
  bomb.replace(29, 4, "\x4C\x55\x0E\x91"s);
  std::string damaged = png;
  damaged[png.size() / 2] ^= 0x55;
  // After the header, which has 25 bytes: an animation of two pictures.
  const std::string animated = png.substr(0, 33) + "\0\0\0\x08"s + "acTL" + "\0\0\0\x02\0\0\0\0"s +
                               "\xF3\x8D\x93\x70"s + png.substr(33);
  const std::string dng = "II\x2A\0\x08\0\0\0\x01\0\x12\xC6\x01\0\x04\0\0\0\x01\x04\0\0\0\0\0\0"s;
  const std::pair<std::string, std::string> rows[] = {
      {dng, "rawPicture"},
      {"\0\0\0\x18"s + "ftypcrx     ", "rawPicture"},
      {"GIF89a and more", "unsupported"},
      {tiffOf(corners(), 1, 2), "severalPictures"},
      {animated, "severalPictures"},
      {png.substr(0, png.size() - 4), "damagedInput"},
      {png.substr(0, png.size() / 2), "damagedInput"},
      {damaged, "damagedInput"},
      {heic.substr(0, heic.size() / 2), "damagedInput"},
      {heic.substr(0, 40), "damagedInput"},
      {heicOf(corners(), {}, 2), "severalPictures"},
      {withStereoPair(heicOf(noise(128), {}, 3)), "severalPictures"},
      {withStereoPair(heicOf(noise(128), {}, 2)), "none"},
      // Higher than any JPEG can be.
      {pngOf(TestPicture::make(1, 70'000, 1, 8, [](int, int, int) { return 9; })), "tooLarge"},
      {withHole(heicOf(noise(128))), "damagedInput"},
      {withHole(tiledHeicOf(noise(128), 0)), "damagedInput"},
      {pngOf(corners(), {"II\x2A\0"s + std::string(70'000, 'x')}), "metadataTooLarge"},
  };
  for (const auto& [source, reason] : rows)
    EXPECT_EQ(failureOf(source), reason) << source.substr(0, 40);
  EXPECT_NE(failureOf(bomb), "none");
}

TEST_F(StillConversion, limits_endTheProcess) {
  const std::string source = heicOf(corners(512, 512));
  ConversionLimits small;
  small.resultBytes = 1000;
  EXPECT_EQ(failureOf(source, small), "tooLarge");
  if (hasShadowMemory) return;
  // Enough memory for the program, but not for the pixels.
  ConversionLimits tight;
  tight.memoryBytes = std::uint64_t{100} << 20U;
  EXPECT_EQ(failureOf(pngOf(TestPicture::make(8000, 8000, 1, 8, [](int, int, int) { return 9; }),
                            {exifOf(6)}),
                      tight),
            "tooMuchMemory");
}

TEST_F(StillConversion, textsOfPng_areSkippedExceptItsXmp) {
  // More texts than the library takes, each of which it would decompress.
  std::string texts;
  const std::string content = std::string{"zTXt"} + "a" + std::string(2, '\0') + "not compressed";
  const auto number = [](std::uint64_t value) {
    return std::string{char(value >> 24U), char(value >> 16U), char(value >> 8U), char(value)};
  };
  for (int i = 0; i < 2000; ++i) {
    texts += number(content.size() - 4) + content +
             number(::crc32(0, reinterpret_cast<const Bytef*>(content.data()),
                            static_cast<uInt>(content.size())));
  }
  std::string png = pngOf(corners(), {{}, "<x:xmpmeta>kept</x:xmpmeta>"});
  const std::size_t headEnd = png.find("IHDR") + 4 + 13 + 4;
  png.insert(headEnd, texts);
  EXPECT_THAT(convert(png), HasSubstr("<x:xmpmeta>kept</x:xmpmeta>"));
}

TEST_F(StillConversion, jpegUnderAnotherName_staysByteForByte) {
  const std::string jpeg = convert(pngOf(corners()));
  EXPECT_EQ(convert(jpeg), jpeg);
  EXPECT_EQ(failureOf(jpeg.substr(0, jpeg.size() - 1)), "damagedInput");
}

TEST_F(StillConversion, heifReferences_toSeveralPictures_areHidden) {
  std::string heic = heicOf(corners(), {exifOf(1), {}, {}});
  const std::string before = heic;
  EXPECT_EQ(relaxHeifReferences(heic), 1U);
  EXPECT_EQ(heic.size(), before.size());
  EXPECT_EQ(heic.find("cdsc"), std::string::npos);
  EXPECT_EQ(relaxHeifReferences(heic), 0U);
  for (std::size_t length = 0; length < 600; ++length) {
    std::string cut = before.substr(0, length);
    relaxHeifReferences(cut);
  }
}

}  // namespace
}  // namespace tavrix
