#include "conversion/codecs/VideoConverter.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <map>

#include "conversion/ProcessConverter.h"
#include "conversion/codecs/FilmCheck.h"
#include "conversion/codecs/tests/support/FilmMaker.h"
#include "device/metadata/Bytes.h"
#include "device/metadata/MetadataReader.h"
#include "foundation/files/platform/FileDescriptor.h"
#include "foundation/tests/support/TemporaryFolder.h"
#include "transfer/tests/TestLibrary.h"

namespace tavrix {
namespace {

using testfilms::FilmRecipe;
using testfilms::SeenFilm;
using Films = std::map<std::string, FilmRecipe>;

/// Converts a test film and examines the result.
class VideoConverterTest : public ::testing::Test {
 protected:
  std::string make(const FilmRecipe& recipe) const {
    testfilms::makeFilm(source(), recipe);
    return folder_.read("source");
  }

  ConversionResult convert() {
    const FileDescriptor from{::open(source().c_str(), O_RDONLY)};
    const FileDescriptor to{::open(result().c_str(), O_RDWR | O_CREAT | O_TRUNC, 0600)};
    told_.clear();
    return VideoConverter::convert({from.number(), to.number()},
                                   [this](double fraction) { told_.push_back(fraction); });
  }

  std::optional<std::string_view> failure(ConversionResult* result = nullptr) {
    try {
      const ConversionResult told = convert();
      if (result != nullptr) *result = told;
    } catch (const ConversionError& error) {
      return textOf(error.failure());
    }
    return std::nullopt;
  }

  static MediaMetadata metadataOf(const std::string& path) {
    return MetadataReader::read(*openForRangedReading(path));
  }

  std::string source() const { return folder_ / "source"; }
  std::string result() const { return folder_ / "result"; }

  TemporaryFolder folder_;
  const std::unique_ptr<Folder> opened_ = openFolder(folder_.path());
  std::vector<double> told_;
};

std::vector<std::int64_t> unevenTimes() {
  std::vector<std::int64_t> times;
  constexpr std::int64_t gaps[] = {20, 40, 25, 10, 95};
  for (std::int64_t time = 0; times.size() < 25;) {
    times.push_back(time);
    time += gaps[times.size() % 5];
  }
  return times;
}

/// Two seconds between the first picture and the others.
std::vector<std::int64_t> timesWithGap() {
  std::vector<std::int64_t> times{0};
  for (int i = 0; i < 20; ++i) times.push_back(1200 + 20 * i);
  return times;
}

Films everyKind() {
  return {{"HEVC", {}},
          {"HEVC of 10 bits", {.pixels = AV_PIX_FMT_YUV420P10}},
          {"H.264", {.encoder = "libx264"}},
          {"H.264 with full colour", {.encoder = "libx264", .pixels = AV_PIX_FMT_YUV444P}},
          {"MPEG-4 with PCM", {.encoder = "mpeg4", .soundEncoders = {"pcm_s16le"}}},
          {"uneven times", {.times = unevenTimes()}},
          {"uneven times as they are", {.encoder = "libx264", .times = unevenTimes()}},
          {"a gap", {.times = timesWithGap(), .flashAt = 1300}},
          {"a gap as it is", {.encoder = "libx264", .times = timesWithGap(), .flashAt = 1300}},
          {"turned", {.clockwise = 90}},
          {"turned as it is", {.encoder = "libx264", .clockwise = -90}},
          {"without sound", {.soundEncoders = {}}},
          {"two sounds", {.soundEncoders = {"aac", "pcm_s16le"}}},
          // x265 gives a film of one picture a random time.
          {"one picture", {.encoder = "mpeg4", .times = {0}, .flashAt = 0}},
          {"without capture", {.hasCapture = false}},
          {"in AVI", {.container = "avi", .encoder = "mpeg4", .soundEncoders = {"pcm_s16le"}}}};
}

using Fields = std::vector<std::vector<int>>;

void expectSameFields(const Fields& before, const Fields& after, int tolerance) {
  ASSERT_EQ(after.size(), before.size());
  for (std::size_t field = 0; field < before.size(); ++field) {
    for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(after[field][i], before[field][i], tolerance);
  }
}

void expectSameFilm(const SeenFilm& before, const SeenFilm& after) {
  EXPECT_EQ(after.codec, "h264");
  EXPECT_EQ(after.pixels, AV_PIX_FMT_YUV420P);
  EXPECT_EQ(after.width, before.width);
  EXPECT_EQ(after.height, before.height);
  EXPECT_EQ(after.clockwise, before.clockwise);
  EXPECT_EQ(after.transfer, before.transfer);
  EXPECT_EQ(after.primaries, before.primaries);
  EXPECT_EQ(after.matrix, before.matrix);
  EXPECT_THAT(after.times, ::testing::Pointwise(::testing::DoubleNear(0.001), before.times));
  EXPECT_NEAR(after.seconds, before.seconds, 0.002);
  EXPECT_EQ(after.sounds, std::vector<std::string>(before.sounds.size(), "aac"));
  EXPECT_NEAR(after.flash, before.flash, 0.001);
  EXPECT_NEAR(after.beep, before.beep, 0.005);
  expectSameFields(before.fields, after.fields, 3);
}

TEST_F(VideoConverterTest, everyKindOfFilm_staysTheSameAsH264) {
  for (const auto& [name, recipe] : everyKind()) {
    SCOPED_TRACE(name);
    make(recipe);
    ConversionResult result;
    ASSERT_EQ(failure(&result), std::nullopt);
    const SeenFilm before = testfilms::seen(source());
    const SeenFilm after = testfilms::seen(this->result());
    expectSameFilm(before, after);
    const bool isTurned = recipe.clockwise != 0;
    EXPECT_EQ(result.width, static_cast<std::uint32_t>(isTurned ? before.height : before.width));
    EXPECT_NEAR(static_cast<double>(result.milliseconds) / 1000, before.seconds, 0.002);
    EXPECT_TRUE(std::is_sorted(told_.begin(), told_.end()));
    if (recipe.times.size() > 1) {
      ASSERT_FALSE(told_.empty());
      EXPECT_GE(told_.back(), 0.8);
    }
    if (recipe.container != std::string{"mov"}) continue;
    EXPECT_EQ(metadataOf(this->result()), metadataOf(source()));
  }
}

TEST_F(VideoConverterTest, h264AndAac_areCarriedOverByteForByte) {
  const std::string bytes = make({.encoder = "libx264"});
  convert();
  const std::string result = folder_.read("result");
  // The media data follow the header in both.
  const std::string media = bytes.substr(bytes.rfind("mdat") + 4, 4000);
  EXPECT_NE(result.find(media), std::string::npos);
}

TEST_F(VideoConverterTest, mp4FileOfH264AndAac_isTakenAsItIs) {
  const std::string bytes =
      make({.container = "mp4", .encoder = "libx264", .times = unevenTimes(), .clockwise = 90});
  const ConversionResult told = convert();
  EXPECT_EQ(folder_.read("result"), bytes);
  const SeenFilm film = testfilms::seen(source());
  EXPECT_EQ(told.width, static_cast<std::uint32_t>(film.height));
  EXPECT_NEAR(static_cast<double>(told.milliseconds) / 1000, film.seconds, 0.002);

  folder_.write("source", bytes.substr(0, bytes.size() * 7 / 10));
  EXPECT_EQ(failure(), "damagedInput");
  std::string unreadable = bytes;
  const std::size_t media = bytes.find("mdat") + 4;
  ASSERT_LT(media + 1000, bytes.size());
  std::fill_n(unreadable.begin() + static_cast<std::ptrdiff_t>(media), 1000, '\0');
  folder_.write("source", unreadable);
  EXPECT_EQ(failure(), "wrongResult");
  // Other sounds, and other pictures, are converted.
  for (const FilmRecipe& recipe :
       {FilmRecipe{.container = "mp4", .encoder = "libx264", .soundEncoders = {"aac", "ac3"}},
        FilmRecipe{.container = "mp4", .encoder = "mpeg4"}}) {
    make(recipe);
    convert();
    expectSameFilm(testfilms::seen(source()), testfilms::seen(result()));
  }
}

TEST_F(VideoConverterTest, header_standsInFrontWithOneMetadataOfEachKind) {
  make({});
  convert();
  const std::string bytes = folder_.read("result");
  EXPECT_LT(bytes.find("moov"), bytes.find("mdat"));
  for (const char* const once : {"udta", "meta", "com.apple.quicktime.make", "\xA9xyz"}) {
    EXPECT_NE(bytes.find(once), std::string::npos) << once;
    EXPECT_EQ(bytes.find(once), bytes.rfind(once)) << once;
  }
}

TEST_F(VideoConverterTest, highDynamicRange_becomesTheStandardOne) {
  for (const auto transfer : {AVCOL_TRC_ARIB_STD_B67, AVCOL_TRC_SMPTE2084}) {
    make({.pixels = AV_PIX_FMT_YUV420P10,
          .transfer = transfer,
          .primaries = AVCOL_PRI_BT2020,
          .matrix = AVCOL_SPC_BT2020_NCL});
    convert();
    const SeenFilm film = testfilms::seen(result());
    EXPECT_EQ(film.pixels, AV_PIX_FMT_YUV420P);
    EXPECT_EQ(film.transfer, AVCOL_TRC_BT709);
    EXPECT_EQ(film.primaries, AVCOL_PRI_BT709);
    EXPECT_EQ(film.matrix, AVCOL_SPC_BT709);
    // The grey field stays grey: 180 of 235 is as bright as paper in HLG, and far above that in PQ.
    const std::vector<int>& grey = film.fields[3];
    EXPECT_GT(grey[0], 200);
    EXPECT_LE(grey[0], 237);
    EXPECT_NEAR(grey[1], 128, 3);
    EXPECT_NEAR(grey[2], 128, 3);
    // The red field stays redder than grey, the blue one bluer.
    EXPECT_GT(film.fields[0][2], 150);
    EXPECT_GT(film.fields[2][1], 150);
  }
}

TEST_F(VideoConverterTest, whatIsNoWholeFilm_isRefusedWithItsReason) {
  const std::string whole = make({});
  const std::string carried = make({.encoder = "libx264"});
  std::string broken = whole;
  for (std::size_t i = whole.size() * 6 / 10; i < whole.size() * 7 / 10; ++i)
    broken[i] = static_cast<char>(broken[i] ^ static_cast<char>(i * 37));
  const std::map<std::string, std::string> damaged{
      {"empty", ""},
      {"no film", std::string(5000, 'x')},
      {"only its beginning", whole.substr(0, 600)},
      {"cut short", whole.substr(0, whole.size() * 7 / 10)},
      {"cut short, carried over", carried.substr(0, carried.size() * 7 / 10)},
      {"broken pictures", broken}};
  for (const auto& [name, bytes] : damaged) {
    folder_.write("source", bytes);
    EXPECT_EQ(failure(), "damagedInput") << name;
  }
  for (const auto& playlist : {"ffconcat version 1.0\nfile other.mov\n", "#EXTM3U\nother.mov\n"}) {
    folder_.write("other.mov", whole);
    folder_.write("source", playlist);
    EXPECT_EQ(failure(), "damagedInput") << playlist;
  }
}

/// Returns the offset of the content of a box whose type occurs once in a film.
std::size_t contentAt(const std::string& film, std::string_view type) {
  EXPECT_EQ(film.find(type), film.rfind(type)) << type;
  return film.find(type) + type.size();
}

std::uint32_t numberAt(const std::string& film, std::size_t at) {
  return static_cast<std::uint32_t>(bigEndian(std::string_view{film}.substr(at, 4)));
}

std::string bigEndianText(std::size_t number) {
  std::string text;
  for (int shift = 24; shift >= 0; shift -= 8) text += static_cast<char>(number >> unsigned(shift));
  return text;
}

TEST_F(VideoConverterTest, indexThatListsTheSameBytesAgainAndAgain_isRefused) {
  // Every picture is the first one, a whole picture, at the same place of the file.
  std::string film = make({.encoder = "libx264", .soundEncoders = {}, .hasCapture = false});
  const std::size_t sizes = contentAt(film, "stsz");
  const std::size_t places = contentAt(film, "stco");
  const std::uint32_t count = numberAt(film, sizes + 8);
  const std::size_t end = places + 8 + std::size_t{4} * numberAt(film, places + 4);
  const std::string first = film.substr(places + 8, 4);
  std::string index = bigEndianText(20) + "stsz" + bigEndianText(0) + film.substr(sizes + 12, 4) +
                      bigEndianText(count) + bigEndianText(12 + std::size_t{4} * count) + "stco" +
                      bigEndianText(0) + bigEndianText(count - 1);
  for (std::uint32_t i = 1; i < count; ++i) index += first;
  // All but one of them leave room for the box that fills the rest.
  const std::size_t rest = end - (sizes - 8) - index.size();
  index += bigEndianText(rest) + "free";
  film.replace(sizes - 8, index.size(), index);
  const std::size_t chunks = contentAt(film, "stsc");
  for (std::uint32_t i = 0; i < numberAt(film, chunks + 4); ++i)
    film.replace(chunks + 12 + std::size_t{12} * i, 4, bigEndianText(1));
  folder_.write("source", film);
  EXPECT_EQ(failure(), "damagedInput");
}

TEST_F(VideoConverterTest, limits_growWithTheSource) {
  const PlannedConversion film = planned_conversion::H264{};
  const ConversionLimits ofSmall = limitsOf(film, 1'600'000);
  const ConversionLimits ofLarge = limitsOf(film, std::uint64_t{100} << 30U);
  EXPECT_LT(ofSmall.processorTime, std::chrono::minutes{20});
  EXPECT_LT(ofSmall.resultBytes, std::uint64_t{1} << 30U);
  EXPECT_EQ(ofLarge.processorTime, std::chrono::hours{12});
  EXPECT_EQ(limitsOf(film, UINT64_MAX).resultBytes, limitsOf(film, UINT64_MAX - 1).resultBytes);
}

TEST_F(VideoConverterTest, aProcessOfItsOwn_givesTheSameAndEndsWhenStopped) {
  // A planted pipe must not be waited for.
  ASSERT_EQ(::mkfifo((folder_ / "pipe").c_str(), 0600), 0);
  EXPECT_THROW(ProcessConverter{TAVRIX_CONVERT_PROGRAM}.convert(
                   assetOf("100APPLE/IMG_1.MOV"), planned_conversion::H264{}, *opened_, "pipe",
                   "of a pipe", {}, {}),
               FileError);
  make({});
  convert();
  const std::string direct = folder_.read("result");
  ProcessConverter converter{TAVRIX_CONVERT_PROGRAM};
  const auto convertInProcess = [&](const std::string& output, std::stop_source& stop, bool stops) {
    return converter.convert(
        assetOf("100APPLE/IMG_1.MOV"), planned_conversion::H264{}, *opened_, "source", output,
        [&](double) {
          if (stops) stop.request_stop();
        },
        stop.get_token());
  };
  std::stop_source stop;
  EXPECT_EQ(convertInProcess("whole", stop, false), direct.size());
  EXPECT_EQ(folder_.read("whole"), direct);
  EXPECT_THROW(convertInProcess("stopped", stop, true), ConversionError);
}

TEST_F(VideoConverterTest, oblongPixelsAndThePlaceOfOtherMakers_stay) {
  for (const char* const encoder : {"libx265", "libx264"}) {
    make({.container = "mp4", .encoder = encoder, .hasPlace = true, .aspect = {4, 3}});
    std::filesystem::remove(folder_ / "out");
    EXPECT_NO_THROW(ProcessConverter{TAVRIX_CONVERT_PROGRAM}.convert(
        assetOf("100APPLE/IMG_1.MP4"), planned_conversion::H264{}, *opened_, "source", "out", {},
        {}))
        << encoder;
    const std::string bytes = folder_.read("out");
    EXPECT_NE(bytes.find("loci"), std::string::npos);
    EXPECT_NE(bytes.find("pasp"), std::string::npos);
    EXPECT_EQ(metadataOf(folder_ / "out").px, 426);
    EXPECT_NEAR(metadataOf(folder_ / "out").lat.value_or(0), 41.9012, 0.0001);
  }
}

TEST_F(VideoConverterTest, resultOtherThanExpected_isFound) {
  make({.encoder = "libx264"});
  convert();
  const FileDescriptor film{::open(result().c_str(), O_RDONLY)};
  const ExpectedFilm right{
      .size = {320, 240}, .matrix = {}, .seconds = 1, .pictures = 30, .sounds = 1};
  EXPECT_NO_THROW(requireFilm(film.number(), right));
  ExpectedFilm wrong[] = {right, right, right, right, right};
  wrong[0].size.width = 318;
  wrong[1].seconds = 1.2;
  wrong[2].pictures = 31;
  wrong[3].sounds = 2;
  wrong[4].matrix = DisplayMatrix{};
  for (const ExpectedFilm& other : wrong)
    EXPECT_THROW(requireFilm(film.number(), other), ConversionError);
  std::filesystem::resize_file(result(), std::filesystem::file_size(result()) - 2000);
  EXPECT_THROW(requireFilm(film.number(), right), ConversionError);
}

}  // namespace
}  // namespace tavrix
