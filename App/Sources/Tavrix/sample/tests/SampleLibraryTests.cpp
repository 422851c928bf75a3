#include "sample/SampleLibrary.h"

#include <gmock/gmock.h>

#include <cstdio>
// jpeglib.h requires <cstdio> first.
#include <jpeglib.h>

#include <map>
#include <set>

#include "foundation/Digest.h"
#include "sample/tests/ExifReader.h"

namespace tavrix {
namespace {

std::vector<SampleFile> smallLibrary(std::uint64_t seed) {
  std::vector<SampleFile> files;
  SampleLibrary::makeEach({seed, 96}, [&](SampleFile file) { files.push_back(std::move(file)); });
  return files;
}

bool isPicture(const SampleFile& file) { return file.item.kind == "photo"; }

/// The size of a picture and the content of its APP1 segment.
struct DecodedJpeg {
  int width = 0;
  int height = 0;
  std::string exif;
};

DecodedJpeg decode(const std::string& bytes) {
  jpeg_decompress_struct info{};
  jpeg_error_mgr errors{};
  info.err = jpeg_std_error(&errors);
  jpeg_create_decompress(&info);
  jpeg_mem_src(&info, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
  jpeg_save_markers(&info, JPEG_APP0 + 1, 0xFFFF);
  jpeg_read_header(&info, TRUE);
  jpeg_start_decompress(&info);
  std::vector<JSAMPLE> row(std::size_t{info.output_width} * 3);
  JSAMPROW pixels = row.data();
  while (info.output_scanline < info.output_height) jpeg_read_scanlines(&info, &pixels, 1);
  DecodedJpeg decoded{static_cast<int>(info.output_width), static_cast<int>(info.output_height),
                      ""};
  if (info.marker_list != nullptr) {
    decoded.exif.assign(reinterpret_cast<const char*>(info.marker_list->data),
                        info.marker_list->data_length);
  }
  EXPECT_EQ(errors.num_warnings, 0);
  jpeg_finish_decompress(&info);
  jpeg_destroy_decompress(&info);
  return decoded;
}

TEST(SampleLibrary, sameSeed_givesTheSameBytes) {
  EXPECT_EQ(smallLibrary(7), smallLibrary(7));
  EXPECT_NE(smallLibrary(7), smallLibrary(8));
}

TEST(SampleLibrary, pictures_differFromEachOther) {
  std::set<std::string> digests;
  const auto files = smallLibrary(1);
  for (const SampleFile& file : files) digests.insert(sha256Hex(file.bytes));
  EXPECT_EQ(digests.size(), files.size());
}

TEST(SampleLibrary, names_areUniqueBecauseMediaLieFlat) {
  std::set<std::string> names;
  std::map<std::string, int> folders;
  for (const SampleFile& file : smallLibrary(1)) {
    EXPECT_TRUE(names.insert(file.item.name).second) << file.item.name;
    EXPECT_EQ(file.item.size, file.bytes.size());
    ++folders[file.item.dir.value()];
  }
  EXPECT_EQ(folders.size(), 2U);
  EXPECT_THAT(names, testing::IsSupersetOf({"IMG_0105.JPG", "IMG_E0105.JPG", "IMG_0105.AAE"}));
}

TEST(SampleLibrary, pictures_holdWhatTheSnapshotSays) {
  for (const SampleFile& file : smallLibrary(1)) {
    if (!isPicture(file)) continue;
    SCOPED_TRACE(file.item.name);
    const DecodedJpeg picture = decode(file.bytes);
    EXPECT_EQ(picture.width, file.item.px);
    EXPECT_EQ(picture.height, file.item.py);
    EXPECT_EQ(!picture.exif.empty(), file.item.exifDate.has_value());
    if (picture.exif.empty()) continue;
    const ExifReader exif{picture.exif};
    const std::uint32_t capture = exif.subdirectory(0x8769).value();
    const std::uint32_t position = exif.subdirectory(0x8825).value();
    EXPECT_EQ(exif.text(capture, 0x9003), file.item.exifDate);
    EXPECT_EQ(exif.text(capture, 0x9011), file.item.exifOffset);
    EXPECT_NEAR(exif.degrees(position, 2), file.item.lat.value(), 1e-12);
    EXPECT_NEAR(exif.degrees(position, 4), file.item.lon.value(), 1e-12);
  }
}

TEST(SampleLibrary, exifDateAndItemDate_areTheSameMoment) {
  for (const SampleFile& file : smallLibrary(3)) {
    if (!file.item.exifDate) continue;
    const auto instant = instantOfExif(*file.item.exifDate, file.item.exifOffset, TimeZone::utc());
    EXPECT_EQ(instant, instantFromUnixSeconds(file.item.itemDate.value())) << file.item.name;
  }
}

TEST(SampleLibrary, noPicture_isTakenForAReducedCopy) {
  for (const SampleFile& file : smallLibrary(1)) {
    const MediaAsset asset = file.item.mediaAsset(file.item.assetID(), TimeZone::utc());
    EXPECT_FALSE(asset.isOptimized()) << file.item.name;
  }
}

}  // namespace
}  // namespace tavrix
