#include "conversion/PictureDecoder.h"

#include <gmock/gmock.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <filesystem>
#include <thread>

#include "conversion/codecs/ColourProfile.h"
#include "conversion/codecs/tests/TestStills.h"
#include "conversion/codecs/tests/support/FilmMaker.h"
#include "conversion/codecs/tests/support/TiledHeic.h"
#include "foundation/tests/support/TemporaryFolder.h"
#include "transfer/MediaConverter.h"

namespace tavrix {
namespace {

using namespace std::string_literals;
using namespace std::chrono_literals;
using testing::ElementsAre;

std::string littleEndianNumber(int value, int bytes) {
  std::string text;
  for (int i = 0; i < bytes; ++i, value >>= 8) text += static_cast<char>(value & 0xFF);
  return text;
}

/// Returns a BMP file of 24 bits; its rows begin at the bottom.
std::string bmpOf(const TestPicture& picture) {
  const auto number = littleEndianNumber;
  std::string file = "BM" + number(54 + picture.width * picture.height * 3, 4) + number(0, 4) +
                     number(54, 4) + number(40, 4) + number(picture.width, 4) +
                     number(picture.height, 4) + number(1, 2) + number(24, 2) +
                     std::string(24, '\0');
  for (int y = picture.height - 1; y >= 0; --y) {
    for (int x = 0; x < picture.width; ++x) {
      const auto pixel = static_cast<std::ptrdiff_t>(y) * picture.width + x;
      const auto at = picture.values.begin() + pixel * 3;
      for (const int c : {2, 1, 0}) file += static_cast<char>(at[c]);
    }
  }
  return file;
}

/// A program that does what its script says once, and then starts the right one. It writes its
/// number into a file each time.
struct PictureDecoding : testing::Test {
  PictureDecoder decoderAfter(const std::string& script, PictureLimits limits = {}) const {
    std::filesystem::remove(folder / "begun");
    folder.write("program", "#!/bin/sh\necho $$ > " + (folder / "id") + "\nif ! [ -e " +
                                (folder / "begun") + " ]; then touch " + (folder / "begun") + "\n" +
                                script + "\nfi\nexec " TAVRIX_CONVERT_PROGRAM " \"$@\"\n");
    ::chmod((folder / "program").c_str(), 0700);
    return PictureDecoder{folder / "program", limits};
  }
  int id() const { return std::stoi(folder.read("id")); }

  TestPicture decode(const PictureRequest& request) {
    const SmallImage image = decoder.decode(request, {});
    TestPicture picture = decodeJpeg(image.jpeg);
    EXPECT_EQ(picture.width, static_cast<int>(image.width));
    EXPECT_EQ(picture.height, static_cast<int>(image.height));
    return picture;
  }
  static std::string failureOf(PictureDecoder& decoder, const PictureRequest& request,
                               std::stop_token stop = {}) {
    try {
      decoder.decode(request, std::move(stop));
    } catch (const ConversionError& error) {
      return std::string{textOf(error.failure())};
    }
    return "none";
  }
  std::string film(const testfilms::FilmRecipe& recipe) const {
    testfilms::makeFilm(folder / "film", recipe);
    return folder.read("film");
  }

  TemporaryFolder folder;
  PictureDecoder decoder{TAVRIX_CONVERT_PROGRAM};
};

std::size_t openDescriptors(int process) {
  const std::filesystem::directory_iterator list{"/proc/" + std::to_string(process) + "/fd"};
  return static_cast<std::size_t>(std::distance(begin(list), end(list)));
}

TEST_F(PictureDecoding, everyFormat_isShrunk) {
  const TestPicture picture = corners(640, 480);
  const std::pair<const char*, std::string> files[] = {
      {"JPEG", jpegOf(picture)},
      {"PNG", pngOf(picture)},
      {"TIFF", tiffOf(picture, 1, 2)},
      {"WebP", webpOf(picture)},
      {"BMP", bmpOf(picture)},
      {"HEIC", heicOf(picture, {}, 2)},
      {"HEIC of tiles", tiledHeicOf(picture, 0)},
      {"film", film({.width = 640, .height = 480})},
      {"deep film",
       film({.encoder = "libx264", .pixels = AV_PIX_FMT_YUV444P10, .width = 640, .height = 480})},
      {"wide pixels", film({.encoder = "mpeg4", .width = 320, .height = 480, .aspect = {2, 1}})}};
  for (const auto& [name, file] : files) {
    SCOPED_TRACE(name);
    const TestPicture result = decode({file});
    EXPECT_EQ(result.width, 320);
    EXPECT_EQ(result.height, 240);
    EXPECT_EQ(cornersOf(result), "rgbw");
    EXPECT_EQ(decode({file, 6, 0, 0, 100}).height, 100);
    EXPECT_EQ(cornersOf(decode({file, 6, 0, 0, 100})), uprightCorners[5]);
  }
  const std::string gif = "GIF89a\1\0\1\0\x80\0\0\xFF\0\0\0\0\0,\0\0\0\0\1\0\1\0\0\2\2D\1\0;"s;
  EXPECT_THAT(decode({gif}).values, ElementsAre(testing::Ge(250), testing::Le(5), testing::Le(5)));
  EXPECT_EQ(decode({jpegOf(corners(40, 30))}).width, 40);
  EXPECT_EQ(
      decode({jpegOf(TestPicture::make(64, 48, 1, 8, [](int, int, int) { return 9; }))}).width, 64);
}

TEST_F(PictureDecoding, everyOrientation_isTurnedUpright) {
  const TestPicture picture = corners();
  for (int orientation = 1; orientation <= 8; ++orientation) {
    const auto own = static_cast<char>(orientation);
    const auto other = static_cast<char>(9 - orientation);
    for (const PictureRequest& request :
         {PictureRequest{jpegOf(picture, {exifOf(own)})},
          PictureRequest{jpegOf(picture, {exifOf(other)}), orientation},
          PictureRequest{tiffOf(picture, orientation)},
          PictureRequest{tiledHeicOf(picture, 1), orientation}}) {
      const TestPicture result = decode(request);
      EXPECT_EQ(result.width, orientation >= 5 ? 48 : 64);
      EXPECT_EQ(cornersOf(result), uprightCorners[orientation - 1]) << orientation;
    }
  }
  EXPECT_EQ(cornersOf(decode({tiledHeicOf(picture, 1)})), uprightCorners[7]);
  EXPECT_EQ(cornersOf(decode({film({.clockwise = 90})})), uprightCorners[5]);
  EXPECT_EQ(cornersOf(decode({film({.clockwise = -90}), 3})), uprightCorners[2]);
}

TEST_F(PictureDecoding, colours_becomeThoseOfSrgb) {
  constexpr int displayP3[] = {200, 100, 50};
  constexpr int srgb[] = {215, 93, 31};
  const auto picture =
      TestPicture::make(64, 64, 3, 8, [&](int, int, int c) { return displayP3[c]; });
  const std::string profile = profileOf(CodedColours{12, 13});
  for (const std::string& file :
       {jpegOf(picture, {{}, {}, profile}), heicOf(picture, {{}, {}, profile})}) {
    const TestPicture result = decode({file});
    for (std::size_t c = 0; c < 3; ++c) EXPECT_NEAR(result.values[3 * 2080 + c], srgb[c], 4);
  }
  const TestPicture same = decode({jpegOf(picture, {{}, {}, "damaged profile"})});
  for (std::size_t c = 0; c < 3; ++c) EXPECT_NEAR(same.values[c], displayP3[c], 3);
}

TEST_F(PictureDecoding, highDynamicRange_becomesTheStandardOne) {
  // The grey of the last field, as the tone mapping shows it.
  constexpr std::pair<AVColorTransferCharacteristic, int> rows[] = {{AVCOL_TRC_ARIB_STD_B67, 226},
                                                                    {AVCOL_TRC_SMPTE2084, 252}};
  for (const auto& [transfer, shown] : rows) {
    const TestPicture result = decode({film({.pixels = AV_PIX_FMT_YUV420P10,
                                             .width = 322,
                                             .height = 242,
                                             .transfer = transfer,
                                             .primaries = AVCOL_PRI_BT2020,
                                             .matrix = AVCOL_SPC_BT2020_NCL}),
                                       0, 0, 0, 161});
    EXPECT_EQ(result.height, 121);
    const auto* const grey = &result.values[3 * (90 * 161 + 120)];
    for (std::size_t c = 0; c < 3; ++c) EXPECT_NEAR(grey[c], shown, 8);
  }
}

TEST_F(PictureDecoding, bars_areCutBeforeTheTurn) {
  const auto picture = TestPicture::make(
      160, 120, 3, 8, [](int, int y, int) { return y < 7 || y >= 113 ? 0 : 180; });
  const TestPicture result = decode({jpegOf(picture), 6, 6000, 4000});
  EXPECT_EQ(result.width, 107);
  EXPECT_EQ(result.height, 160);
}

TEST_F(PictureDecoding, unshowableFiles_costOnlyThemselves) {
  const std::string png = pngOf(corners());
  std::string bomb = png;
  // 60000 by 60000 pixels, with its checksum.
  bomb.replace(16, 8, "\0\0\xEA\x60\0\0\xEA\x60"s);
  bomb.replace(29, 4, "\x4C\x55\x0E\x91"s);
  const std::string heic = heicOf(corners());
  const std::string mov = film({});
  PictureDecoder running = decoderAfter("true");
  running.prepare();
  EXPECT_EQ(failureOf(running, {png}), "none");
  const int first = id();
  running.prepare();
  for (const std::string& file :
       {""s, "text"s, bomb, png.substr(0, 90), heic.substr(0, heic.size() / 2), "GIF89a"s, "BM"s,
        "\xFF\xD8\xFF"s, mov.substr(0, 400), "\0\0\0\x18"s + "ftypcrx     "})
    EXPECT_NE(failureOf(running, {file}), "none") << file.substr(0, 20);
  EXPECT_EQ(failureOf(running, {png, 0, 0, 0, 0}), "tooLarge");
  EXPECT_EQ(failureOf(running, {png, 0, 0, 0, 5000}), "tooLarge");
  EXPECT_EQ(failureOf(running, {png}), "none");
  EXPECT_EQ(id(), first);
}

TEST_F(PictureDecoding, misbehavingProcess_isReplaced) {
  PictureLimits limits;
  limits.patience = 3s;
  const auto reply = [](const std::string& head, const std::string& rest = "") {
    return "head -c 40 <&3 >/dev/null; printf '" + head + rest + "' >&3; sleep 60";
  };
  const std::string z = R"(\0\0\0)";
  const std::pair<std::string, const char*> rows[] = {
      {"kill -SEGV $$", "crashed"},
      {"kill -XCPU $$", "tooSlow"},
      {"exit 0", "crashed"},
      {"sleep 60", "tooSlow"},
      {"exec 3>&-; sleep 60", "failed"},
      // Unknown failure, a failure with a picture, a picture that is empty, too long or too large.
      {reply(z + R"(\143)" + z + R"(\0)" + z + R"(\0)" + z + R"(\0)"), "wrongResult"},
      {reply(z + R"(\1)" + z + R"(\10)" + z + R"(\10)" + z + R"(\10)"), "wrongResult"},
      {reply(z + R"(\0)" + z + R"(\10)" + z + R"(\10)" + z + R"(\0)"), "wrongResult"},
      {reply(z + R"(\0)" + z + R"(\10)" + z + R"(\10)" + R"(\100\0\0\0)"), "wrongResult"},
      {reply(z + R"(\0)" + R"(\0\0\2\0)" + z + R"(\10)" + z + R"(\10)"), "wrongResult"},
      // No JPEG file, and one of another size.
      {reply(z + R"(\0)" + z + R"(\10)" + z + R"(\10)" + z + R"(\4)", "text"), "wrongResult"},
      {reply(z + R"(\0)" + z + R"(\11)" + z + R"(\10)" + z + R"(\25)",
             R"(\377\330\377\300\0\013\010\0\010\0\010\1\1\021\0\377\332\0\002\377\331)"),
       "wrongResult"}};
  const PictureRequest request{pngOf(corners())};
  for (const auto& [script, reason] : rows) {
    PictureDecoder next = decoderAfter(script, limits);
    EXPECT_EQ(failureOf(next, request), reason) << script;
    EXPECT_EQ(failureOf(next, request), "none") << script;
  }
  PictureDecoder absent{"/no/such/program"};
  absent.prepare();
  EXPECT_EQ(failureOf(absent, request), "failed");
}

TEST_F(PictureDecoding, stop_killsTheProcess) {
  PictureDecoder hanging = decoderAfter("exec sleep 60");
  std::stop_source stop;
  std::jthread stopper{[&] {
    while (!std::filesystem::exists(folder / "begun")) std::this_thread::sleep_for(10ms);
    stop.request_stop();
  }};
  const PictureRequest request{pngOf(corners())};
  EXPECT_EQ(failureOf(hanging, request, stop.get_token()), "failed");
  EXPECT_NE(::kill(id(), 0), 0);
  EXPECT_EQ(failureOf(hanging, request), "none");
}

TEST_F(PictureDecoding, aThousandRequests_leakNothing_andKilledOnesAreReplaced) {
  PictureDecoder running = decoderAfter("true");
  const std::string damaged = pngOf(corners()).substr(0, 100);
  const PictureRequest requests[] = {
      {jpegOf(corners())}, {heicOf(corners())}, {damaged}, {film({.soundEncoders = {}})}};
  for (const PictureRequest& request : requests) failureOf(running, request);
  const int first = id();
  const std::size_t own = openDescriptors(::getpid());
  const std::size_t its = openDescriptors(first);
  for (std::size_t i = 0; i < 1000; ++i)
    ASSERT_EQ(failureOf(running, requests[i % 4]) == "none", i % 4 != 2);
  EXPECT_EQ(id(), first);
  EXPECT_EQ(openDescriptors(::getpid()), own);
  EXPECT_EQ(openDescriptors(first), its);
  EXPECT_EQ(its, 4U);

  ::kill(first, SIGKILL);
  // A process with sanitizers takes a while to end.
  siginfo_t end{};
  ::waitid(P_PID, static_cast<id_t>(first), &end, WEXITED | WNOWAIT);
  EXPECT_EQ(failureOf(running, requests[0]), "none");
  EXPECT_NE(id(), first);
  EXPECT_EQ(openDescriptors(::getpid()), own);
}

TEST_F(PictureDecoding, process_livesForItsProcessorTime) {
  PictureLimits limits;
  limits.lifetime = 2 * limits.processorTime;
  PictureDecoder running = decoderAfter("true", limits);
  const PictureRequest request{pngOf(corners())};
  EXPECT_EQ(failureOf(running, request), "none");
  const int first = id();
  EXPECT_EQ(failureOf(running, request), "none");
  EXPECT_NE(id(), first);
}

}  // namespace
}  // namespace tavrix
