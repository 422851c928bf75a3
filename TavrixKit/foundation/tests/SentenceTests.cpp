#include "foundation/Sentence.h"

#include <gmock/gmock.h>

#include <numbers>

#include "foundation/Digest.h"
#include "foundation/GeoPoint.h"
#include "foundation/Log.h"
#include "foundation/tests/support/RecordingLog.h"

namespace tavrix {
namespace {

constexpr CountedNoun files{"файл", "файла", "файлов", "file", "files"};

TEST(Counted, number_choosesTheFormOfTheNoun) {
  struct Row {
    std::uint64_t count;
    const char* russian;
    const char* english;
  };
  const Row rows[] = {{0, "0 файлов", "0 files"},
                      {1, "1 файл", "1 file"},
                      {2, "2 файла", "2 files"},
                      {4, "4 файла", "4 files"},
                      {5, "5 файлов", "5 files"},
                      {11, "11 файлов", "11 files"},
                      {12, "12 файлов", "12 files"},
                      {14, "14 файлов", "14 files"},
                      {20, "20 файлов", "20 files"},
                      {21, "21 файл", "21 files"},
                      {22, "22 файла", "22 files"},
                      {25, "25 файлов", "25 files"},
                      {111, "111 файлов", "111 files"},
                      {121, "121 файл", "121 files"},
                      {1024, "1\u00A0024 файла", "1,024 files"},
                      {1000000, "1\u00A0000\u00A0000 файлов", "1,000,000 files"}};
  for (const Row& row : rows) {
    EXPECT_EQ(counted(Language::russian, row.count, files), row.russian);
    EXPECT_EQ(counted(Language::english, row.count, files), row.english);
  }
}

TEST(BytesText, size_isRoundedIntoTheUnitThatFits) {
  struct Row {
    std::uint64_t bytes;
    const char* russian;
    const char* english;
  };
  const Row rows[] = {{0, "0\u00A0Б", "0\u00A0B"},
                      {999, "999\u00A0Б", "999\u00A0B"},
                      {1000, "1,0\u00A0КБ", "1.0\u00A0kB"},
                      {2'900'000, "2,9\u00A0МБ", "2.9\u00A0MB"},
                      {999'949, "999,9\u00A0КБ", "999.9\u00A0kB"},
                      {999'950, "1,0\u00A0МБ", "1.0\u00A0MB"},
                      {1'000'000'000'000, "1,0\u00A0ТБ", "1.0\u00A0TB"},
                      {UINT64_MAX, "18446,7\u00A0ПБ", "18446.7\u00A0PB"}};
  for (const Row& row : rows) {
    EXPECT_EQ(bytesText(Language::russian, row.bytes), row.russian);
    EXPECT_EQ(bytesText(Language::english, row.bytes), row.english);
  }
}

TEST(Language, machine_talksEnglishOnlyWhenItIsEnglish) {
  EXPECT_EQ(languageOfLocale("en_GB"), Language::english);
  EXPECT_EQ(languageOfLocale("ru_RU"), Language::russian);
  EXPECT_EQ(languageOfLocale("de_DE"), Language::russian);
  EXPECT_EQ(languageOfLocale(""), Language::russian);
}

TEST(Sha256, publishedVectors_agreeHoweverTheBytesArrive) {
  EXPECT_EQ(sha256Hex(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
  const std::string abc = "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad";
  EXPECT_EQ(sha256Hex("abc"), abc);
  Sha256 digest;
  for (const char c : std::string{"abc"}) digest.add(std::as_bytes(std::span{&c, 1}));
  EXPECT_EQ(digest.finish(), abc);
  const std::string block(1000, 'a');
  for (int i = 0; i < 1000; ++i) digest.add(std::as_bytes(std::span{block}));
  EXPECT_EQ(digest.finish(), "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST(Distance, points_areMeasuredOnTheSphere) {
  EXPECT_NEAR(haversineDistanceKm({0, 0}, {0, 1}), 12742.0 * std::numbers::pi / 360, 1e-9);
  EXPECT_NEAR(haversineDistanceKm({55.7558, 37.6173}, {59.9343, 30.3351}), 633.0, 1.0);
  EXPECT_NEAR(haversineDistanceKm({0, 179.5}, {0, -179.5}), haversineDistanceKm({0, 0}, {0, 1}),
              1e-9);
  EXPECT_NEAR(haversineDistanceKm({10, 20}, {-10, -160}), 6371.0 * std::numbers::pi, 1e-3);
}

TEST(Log, privateField_isHiddenOrMadeHarmless) {
  RecordingLog shut{false};
  RecordingLog open{true};
  for (RecordingLog* log : {&shut, &open}) {
    writeLog(*log, "start: files={}, dest={}", 3, PrivateField{"/home/anna\nstart: files=9"});
  }
  EXPECT_THAT(shut.lines(), testing::ElementsAre("start: files=3, dest=<private>"));
  EXPECT_THAT(open.lines(),
              testing::ElementsAre("start: files=3, dest=/home/anna\uFFFDstart: files=9"));
}

}  // namespace
}  // namespace tavrix
