#include "device/thumbnails/EmbeddedPicture.h"

#include <gtest/gtest.h>

#include "device/metadata/HeifItems.h"
#include "device/metadata/MemoryReader.h"
#include "device/metadata/tests/support/CountingReader.h"
#include "device/thumbnails/tests/support/PictureBytes.h"
#include "foundation/files/FileError.h"

namespace tavrix {
namespace {

using namespace testbytes;
using EmbeddedPictures::Wanted;
using namespace std::chrono_literals;
using Origin = EmbeddedPicture::Origin;

std::optional<EmbeddedPicture> found(std::string_view bytes, const Wanted& wanted = {}) {
  MemoryReader file{bytes};
  return EmbeddedPictures::find(file, wanted);
}

/// Returns the origin of the picture that is found, and its longer side: "preview 640".
std::string foundIn(std::string_view bytes, const Wanted& wanted) {
  constexpr std::array<const char*, 5> names{"exif", "preview", "item", "frame", "whole"};
  const auto picture = found(bytes, wanted);
  if (!picture) return "none";
  return std::string{names.at(static_cast<std::size_t>(picture->origin))} + " " +
         std::to_string(std::max(picture->width, picture->height));
}

TEST(EmbeddedPicture, fileWithThumbnail_takesThreeRangesAtMost) {
  const std::string far = exifSegment(rome()) + segment(0xE2, std::string(60'000, 'i')) +
                          segment(0xE2, std::string(60'000, 'i')) +
                          segment(0xE2, std::string(60'000, 'i')) + frame(4032, 3024);
  const std::string picture(3'000'000, 'p');
  struct Row {
    const char* name;
    std::string bytes;
    Origin origin;
    std::size_t ranges;
  };
  const std::array<Row, 6> rows{{
      {"JPEG", photo({}) + picture, Origin::exifThumbnail, 1},
      {"JPEG with a far frame", photo({.after = far}) + picture, Origin::exifThumbnail, 3},
      {"HEIC", pictureWithItem({}) + picture, Origin::thumbnailItem, 2},
      {"DNG", raw({}) + picture, Origin::preview, 2},
      {"film with its header at the end", shortFilm({}), Origin::keyFrame, 3},
      {"film with its header at the start", shortFilm({.isFirst = true}), Origin::keyFrame, 2},
  }};
  for (const Row& row : rows) {
    CountingReader file{row.bytes};
    const auto result = EmbeddedPictures::find(file, {});
    ASSERT_TRUE(result) << row.name;
    EXPECT_EQ(result->origin, row.origin) << row.name;
    EXPECT_EQ(file.ranges(), row.ranges) << row.name;
    EXPECT_LE(file.bytesRead(), 256U * 1024) << row.name;
  }
}

TEST(EmbeddedPicture, exifThumbnail_comesWithOrientationAndFullSize) {
  const auto picture = found(photo({.orientation = 6}));
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->request.bytes, smallJpeg(160, 120));
  EXPECT_EQ(picture->request.orientation, 6);
  EXPECT_EQ(picture->request.fullWidth, 4032U);
  EXPECT_EQ(picture->request.fullHeight, 3024U);
  EXPECT_EQ(picture->width, 160U);
  EXPECT_EQ(picture->height, 120U);
  EXPECT_EQ(found(photo({.orientation = 9}))->request.orientation, 1);
}

TEST(EmbeddedPicture, severalSizes_cheapestThatIsLargeEnough) {
  const std::string jpegs = photo({.previews = {{0x010001, smallJpeg(640, 480)},
                                                {0x010002, smallJpeg(1440, 1080)},
                                                {0, smallJpeg(3000, 2000)}}});
  const std::string raws = raw({});
  struct Row {
    const std::string& bytes;
    Wanted wanted;
    const char* expected;
  };
  const std::array<Row, 11> rows{{
      {jpegs, {.leastSide = 160}, "exif 160"},
      {jpegs, {.leastSide = 161}, "preview 640"},
      {jpegs, {.leastSide = 1280}, "preview 1440"},
      // The list says at most 1920, the bytes say less.
      {jpegs, {.leastSide = 1800}, "preview 1440"},
      {jpegs, {.leastSide = 3000}, "preview 1440"},
      {jpegs, {.leastSide = 3000, .prefersWholeToSmaller = true}, "whole 4032"},
      {jpegs,
       {.leastSide = 3000, .maxWholeBytes = 9, .prefersWholeToSmaller = true},
       "preview 1440"},
      {raws, {.leastSide = 160}, "preview 256"},
      {raws, {.leastSide = 1000}, "preview 1024"},
      // The sensor's values are a JPEG file, too, but a lossless one.
      {raws, {.leastSide = 3000}, "preview 1024"},
      {raws, {.leastSide = 3000, .prefersWholeToSmaller = true}, "preview 1024"},
  }};
  for (const Row& row : rows)
    EXPECT_EQ(foundIn(row.bytes, row.wanted), row.expected) << row.wanted.leastSide;
}

TEST(EmbeddedPicture, fileWithoutUsableThumbnail_isTakenWhole) {
  const std::string tall = photo({.thumbnail = smallJpeg(120, 160)});
  const std::string broken = photo({.thumbnail = "no JPEG"});
  const std::string outside = photo({.thumbnailBytes = 100'000});
  const std::string image = png(300, 200, "");
  const std::string huge = pictureWithItem({.media = std::string(5 << 20, 'h')});
  const Wanted small{.maxWholeBytes = 8 << 20};
  for (const std::string* bytes : {&tall, &broken, &outside, &image, &huge}) {
    const auto picture = found(*bytes, small);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->origin, Origin::whole);
    EXPECT_EQ(picture->request.bytes, *bytes);
    EXPECT_EQ(picture->request.orientation, 0);
    EXPECT_FALSE(found(*bytes, {.mayReadWhole = false}));
    EXPECT_FALSE(found(*bytes, {.maxWholeBytes = bytes->size() - 1}));
  }
  EXPECT_FALSE(found("not a picture of any kind"));
  EXPECT_FALSE(found(raw({.hasPreviews = false})));
}

/// Returns the content of the properties of the primary picture of a HEIF file, by type.
std::map<std::string, std::string> propertiesOfPrimary(FileBytes& file, const HeifItems& items) {
  std::map<std::string, std::string> result;
  for (const IsoBox& property : items.propertiesOf(items.primary()))
    result[std::string{property.type}] = contentOf(file, property).value();
  return result;
}

TEST(EmbeddedPicture, thumbnailItem_isAFileOfItsOwn) {
  const std::string turn(1, '\3');
  struct Row {
    ItemPicture picture;
    std::string turn;  ///< expected; empty for none
  };
  const std::array<Row, 3> rows{{{{.turn = "\1", .ownTurn = turn}, turn},
                                 {{.turn = turn}, turn},
                                 // It is tall while the picture is wide, so it is upright already.
                                 {{.width = 240, .height = 320, .turn = turn}, ""}}};
  for (const Row& row : rows) {
    const auto picture = found(pictureWithItem(row.picture));
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->request.orientation, 0);
    EXPECT_EQ(picture->width, row.picture.width);
    MemoryReader reader{picture->request.bytes};
    FileBytes file{reader};
    const auto items = HeifItems::open(file);
    ASSERT_TRUE(items);
    EXPECT_EQ(items->typeOf(items->primary()), "hvc1");
    const auto extent = items->extentOf(items->primary());
    ASSERT_TRUE(extent);
    EXPECT_EQ(extent->begin + extent->length, file.size());
    EXPECT_EQ(file.at(extent->begin, extent->length), row.picture.media);
    auto properties = propertiesOfPrimary(file, *items);
    EXPECT_EQ(properties["hvcC"], "configuration");
    EXPECT_EQ(properties["colr"], "colours");
    EXPECT_EQ(properties["irot"], row.turn);
    EXPECT_EQ(properties.count("auxC"), 0U);
  }
}

TEST(EmbeddedPicture, heifWithThumbnailInExif_isTurnedLikeThePicture) {
  // Quarter turns to the left, then the mirror.
  const std::array<std::tuple<std::string, std::string, int>, 4> rows{
      {{"\3", "", 6}, {"\1", "", 8}, {"", "\1", 2}, {"\1", std::string(1, '\0'), 5}}};
  for (const auto& [turn, mirror, orientation] : rows) {
    const auto picture = found(pictureWithItem({.isItem = false, .turn = turn, .mirror = mirror}));
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->origin, Origin::exifThumbnail);
    EXPECT_EQ(picture->request.bytes, smallJpeg(160, 120));
    EXPECT_EQ(picture->request.orientation, orientation);
  }
}

TEST(EmbeddedPicture, keyFrame_isAFilmOfItsOwn) {
  for (const FilmLayout& layout : {FilmLayout{}, FilmLayout{.isFirst = true},
                                   FilmLayout{.keySample = 0}, FilmLayout{.isLarge = true}}) {
    const auto picture = found(shortFilm(layout));
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->width, 1920U);
    EXPECT_EQ(picture->height, 1080U);
    const std::string sample = sampleOfFilm(layout.keySample == 0 ? 1 : layout.keySample);
    EXPECT_TRUE(picture->request.bytes.ends_with(sample));
    EXPECT_NE(picture->request.bytes.find(turnedGeometry()), std::string::npos);
    EXPECT_NE(picture->request.bytes.find("configuration"), std::string::npos);
    EXPECT_LT(picture->request.bytes.size(), sample.size() + 1000);
    // The new film has the same key frame, and nothing else.
    EXPECT_EQ(found(picture->request.bytes)->request.bytes, picture->request.bytes);
  }
}

TEST(EmbeddedPicture, film_comesWithItsLength) {
  const std::string early(12, '\0');
  const std::string long64 = "\x01" + std::string(19, '\0');
  const std::vector<std::pair<std::string, std::optional<std::chrono::milliseconds>>> rows{
      {early + number(600, 4) + number(4'500, 4), 7'500ms},
      {early + number(1'000, 4) + number(1, 4), 1ms},
      {long64 + number(48'000, 4) + number(48'000ULL * 3'600, 8), 1h},
      {early + number(600, 4) + number(0, 4), std::nullopt},         // a film of fragments
      {early + number(1, 4) + number(0xFFFFFFFF, 4), std::nullopt},  // unknown
      {early + number(0, 4) + number(600, 4), std::nullopt},
      {early + number(600, 4) + number(0, 3), std::nullopt},  // cut off
      {"", std::nullopt}};
  for (const auto& [header, length] : rows) {
    const auto picture = found(shortFilm({.filmHeader = header}));
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->filmLength, length) << testing::PrintToString(header);
  }
  EXPECT_EQ(found(photo({}))->filmLength, std::nullopt);
}

TEST(EmbeddedPicture, damagedFile_staysWithinLimits) {
  const std::array<std::string, 5> files{photo({.previews = {{0x010001, smallJpeg(640, 480)}}}),
                                         pictureWithItem({}), pictureWithItem({.isItem = false}),
                                         raw({}), shortFilm({.isFirst = true})};
  const Wanted wanted{.leastSide = 300, .mayReadWhole = false};
  for (const std::string& bytes : files) {
    const std::size_t end = std::min<std::size_t>(bytes.size(), 2500);
    for (std::size_t i = 0; i < end; ++i) {
      std::string damaged = bytes;
      damaged[i] = static_cast<char>(damaged[i] ^ (i % 3 == 0 ? '\x80' : '\xFF'));
      for (const std::string_view file :
           {std::string_view{damaged}, std::string_view{bytes}.substr(0, i)}) {
        const auto picture = found(file, wanted);
        if (picture) {
          EXPECT_LE(picture->request.bytes.size(), file.size() + 2000) << i;
        }
      }
    }
  }
}

TEST(EmbeddedPicture, errorOfTheFile_isPassedOn) {
  struct Lost : RangedReader {
    std::uint64_t size() const override { return 1000; }
    std::size_t read(std::uint64_t /*offset*/, std::span<char> /*buffer*/) override {
      throw FileError{FileOperation::read, "lost", EIO};
    }
  } file;
  EXPECT_THROW(EmbeddedPictures::find(file, {}), FileError);
}

}  // namespace
}  // namespace tavrix
