#include "sample/ExifSegment.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "sample/tests/ExifReader.h"

namespace tavrix {
namespace {

using namespace std::chrono_literals;

LocalTime noon() {
  return std::chrono::local_days{std::chrono::year{2026} / 5 / 20} + 12h + 3min + 4s;
}

TEST(ExifSegment, dateAndOffset_areReadBack) {
  const ExifReader exif{exifSegment({noon(), -210min, std::nullopt, 400, 300})};
  const auto capture = exif.subdirectory(0x8769);
  ASSERT_TRUE(capture);
  EXPECT_EQ(exif.text(*capture, 0x9003), "2026:05:20 12:03:04");
  EXPECT_EQ(exif.text(*capture, 0x9011), "-03:30");
  EXPECT_FALSE(exif.subdirectory(0x8825)) << "no place, no position";
}

TEST(ExifSegment, place_isReadBackAsRounded) {
  for (const GeoPoint place :
       {GeoPoint{41.890210, 12.492231}, GeoPoint{-33.999999, -70.000001}, GeoPoint{0, 0}}) {
    const GeoPoint rounded = exifRounded(place);
    const ExifReader exif{exifSegment({noon(), 2h, place, 400, 300})};
    const std::uint32_t position = exif.subdirectory(0x8825).value();
    EXPECT_NEAR(exif.degrees(position, 2), std::abs(rounded.latitude), 1e-12);
    EXPECT_NEAR(exif.degrees(position, 4), std::abs(rounded.longitude), 1e-12);
    EXPECT_EQ(exif.text(position, 1), place.latitude < 0 ? "S" : "N");
    EXPECT_EQ(exif.text(position, 3), place.longitude < 0 ? "W" : "E");
  }
}

TEST(ExifSegment, directories_listTheirTagsInOrder) {
  const ExifReader exif{exifSegment({noon(), 2h, GeoPoint{41.89, 12.49}, 400, 300})};
  for (const std::uint32_t directory : {exif.mainDirectory(), exif.subdirectory(0x8769).value(),
                                        exif.subdirectory(0x8825).value()}) {
    const auto tags = exif.tags(directory);
    EXPECT_TRUE(std::is_sorted(tags.begin(), tags.end()));
    EXPECT_FALSE(tags.empty());
  }
}

}  // namespace
}  // namespace tavrix
