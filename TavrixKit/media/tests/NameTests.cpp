#include <gtest/gtest.h>

#include "media/MediaAsset.h"
#include "media/ParsedName.h"

namespace tavrix {
namespace {

using BundleBuilder::FileNameParts;
using BundleBuilder::ParsedName;
using BundleBuilder::parseName;
using BundleBuilder::splitFileName;

TEST(ParsedName, cameraName_isTakenApart) {
  struct Row {
    std::string name;
    ParsedName parts;
  };
  const Row rows[] = {{"IMG_1400.HEIC", {"IMG", "1400", false, "heic"}},
                      {"IMG_E0100.HEIC", {"IMG", "0100", true, "heic"}},
                      {"IMG_0100.AAE", {"IMG", "0100", false, "aae"}},
                      {"img_e12.jpg", {"IMG", "12", true, "jpg"}},
                      {"IMG_7", {"IMG", "7", false, ""}},
                      {
                          "a.b_1.GZ",
                          {"A.B", "1", false, "gz"},
                      },
                      {".x_1", {".X", "1", false, ""}},
                      {"съёмка_01.ФОТО", {"СЪЁМКА", "01", false, "фото"}},
                      {"folder/IMG_E1.MOV", {"FOLDER/IMG", "1", true, "mov"}},
                      {"e\u0301_1.jpg", {"E\u0301", "1", false, "jpg"}}};
  for (const Row& row : rows) EXPECT_EQ(parseName(row.name), row.parts) << row.name;
}

TEST(ParsedName, anyOtherName_isNothing) {
  for (const char* name : {"photo.jpg",
                           "_1234.JPG",
                           "IMG_E.JPG",
                           "IMG_12a4.JPG",
                           "IMG_1400 2.HEIC",
                           "VK_IMG_1500.HEIC",
                           "",
                           "_",
                           "IMG_",
                           "IMG_.HEIC",
                           "IMG_1_2.HEIC",
                           "IMG_(1).HEIC",
                           "IMG_EE1.HEIC",
                           "IMG_1.",
                           "IMG_1.a b",
                           "IMG_١٢.HEIC",
                           "IMG_1\u0301.HEIC",
                           "IMG_e\u03011.HEIC",
                           "IMG_\u0301"
                           "1.HEIC",
                           "Screenshot 2026.png"}) {
    EXPECT_FALSE(parseName(name)) << name;
  }
}

TEST(FileName, extension_beginsAfterTheLastDotThatCounts) {
  struct Row {
    const char* name;
    FileNameParts parts;
  };
  const Row rows[] = {{"a.b.JPG", {"a.b", "JPG"}}, {".jpg", {".jpg", ""}},    {"a.", {"a.", ""}},
                      {"a.b c", {"a.b c", ""}},    {"a b.c", {"a b", "c"}},   {"a", {"a", ""}},
                      {"..x", {".", "x"}},         {"Фото.ж", {"Фото", "ж"}}, {"", {"", ""}}};
  for (const Row& row : rows) EXPECT_EQ(splitFileName(row.name), row.parts) << row.name;
}

TEST(MediaKind, fileName_decidesByTheTextAfterTheLastDot) {
  struct Row {
    MediaKind kind;
    std::vector<const char*> names;
  };
  const Row rows[] = {
      {MediaKind::photo,
       {"IMG_0100.PNG", "a.HEIC", "a.dng", "a.Cr3", ".jpg", "a.mov.tiff", "a.rw2", "a.HIF", "a.jxl",
        "a.jpe", "a.jfif", "a.mpo", "a.srw", "a.pef", "a.x3f", "a.3fr", "a.rwl", "a.iiq", "a.erf"}},
      {MediaKind::video,
       {"IMG_1401.MOV", "a.mp4", "a.M4V", "a.3gp", "a.jpg.mpeg", "00001.MTS", "a.m2ts", "a.3g2",
        "a.mkv", "a.webm", "a.insv"}},
      {MediaKind::sidecar, {"IMG_0100.aae", "IMG_0100.AAE"}},
      {MediaKind::other, {"heic", "a.", "", "a.txt", "a.jpg ", "a.heic.zip"}}};
  for (const Row& row : rows) {
    for (const char* name : row.names) EXPECT_EQ(mediaKindOfFileName(name), row.kind) << name;
  }
  EXPECT_EQ(mediaKindOf("Photo"), std::nullopt);
  EXPECT_EQ(mediaKindOf("sidecar"), MediaKind::sidecar);
}

TEST(MediaAsset, textsThatShareBytes_stayApart) {
  const auto asset = [](std::string_view id, std::string_view name, MediaAsset::Text directory,
                        MediaAsset::Text cloudID) {
    return MediaAsset{id, name, directory, MediaKind::photo, 1, {}, {}, false, cloudID, "abc"};
  };
  struct Row {
    const char* id;
    const char* name;
    MediaAsset::Text directory;
    MediaAsset::Text cloudID;
  };
  for (const Row& row :
       {Row{"100APPLE/IMG_E1.JPG#2", "IMG_E1.JPG", "100APPLE", std::nullopt},
        Row{"a/a", "a", "a", "a"}, Row{"x", "", "", ""}, Row{"", "name", std::nullopt, "c"},
        Row{"short", "a name that is longer", "dir", "cloud"}}) {
    const MediaAsset made = asset(row.id, row.name, row.directory, row.cloudID);
    EXPECT_EQ(made.id(), row.id);
    EXPECT_EQ(made.name(), row.name);
    EXPECT_EQ(made.directory(), row.directory);
    EXPECT_EQ(made.cloudID(), row.cloudID);
    EXPECT_EQ(made.sha256(), "abc");
    EXPECT_NE(made, asset(row.id, row.name, row.directory, "other"));
  }
  EXPECT_TRUE(asset("1", "IMG_E0100.HEIC", {}, {}).isEditedVariant());
  EXPECT_FALSE(asset("1", "IMG_0100.HEIC", {}, {}).isEditedVariant());
}

}  // namespace
}  // namespace tavrix
