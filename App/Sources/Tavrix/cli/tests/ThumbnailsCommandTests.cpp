#include <fstream>

#include "cli/tests/CommandTester.h"
#include "device/cable/tests/support/SimulatedCable.h"

namespace tavrix::cli {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

/// Returns a Windows bitmap of one colour, 40 by 20 pixels.
std::string bitmap() {
  constexpr unsigned rowBytes = 120;
  constexpr std::uint32_t bytes = 54 + 20 * rowBytes;
  std::string file = "BM";
  const auto number = [&](std::uint32_t value, int size) {
    for (int i = 0; i < size; ++i) file += static_cast<char>(value >> (8 * i) & 0xFFU);
  };
  for (const std::uint32_t value : {bytes, 0U, 54U, 40U, 40U, 20U}) number(value, 4);
  number(1, 2);
  number(24, 2);
  for (int i = 0; i < 6; ++i) number(0, 4);
  return file + std::string(20 * rowBytes, '\x50');
}

std::vector<std::string> filesIn(const std::filesystem::path& folder) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator{folder}) {
    names.push_back(entry.path().filename());
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string contentOf(const std::filesystem::path& path) {
  std::ifstream file{path, std::ios::binary};
  return std::string{std::istreambuf_iterator<char>{file}, {}};
}

struct ThumbnailsCommandTest : testing::Test {
  ThumbnailsCommandTest() {
    tester.folder.write("phone/DCIM/100APPLE/IMG_0001.BMP", bitmap());
    tester.folder.write("phone/DCIM/100APPLE/IMG_0002.JPG", "no picture");
    tester.folder.write("phone/DCIM/100APPLE/IMG_0002.AAE", "edit");
    tester.folder.write("phone/DCIM/100APPLE/<b>.BMP", bitmap());
    tester.conversionProgram = TAVRIX_CONVERT_PROGRAM;
  }
  CommandTester tester;
};

TEST_F(ThumbnailsCommandTest, everyPicture_isWrittenOrTold) {
  const auto result =
      tester.run({"thumbnails", "phone", "photos", "--sheet", "other", "--lang", "en"});
  EXPECT_EQ(result.status, ExitStatus::someFailed) << result.err;
  EXPECT_THAT(result.out, HasSubstr("written: 2"));
  EXPECT_THAT(result.err, HasSubstr("100APPLE/IMG_0002.JPG"));
  const std::string first = "1_100APPLE_<b>.BMP.jpg";
  EXPECT_THAT(filesIn(tester.folder / "photos"), ElementsAre(first, "2_100APPLE_IMG_0001.BMP.jpg"));
  EXPECT_EQ(contentOf(tester.folder / "photos/" + first).substr(0, 3), "\xFF\xD8\xFF");
  const std::string page = contentOf(tester.folder / "other/index.html");
  EXPECT_THAT(page, HasSubstr(R"(src="pictures/1_100APPLE_%3Cb%3E.BMP.jpg" alt="&lt;b&gt;.BMP")"));
  EXPECT_TRUE(std::filesystem::exists(tester.folder / "other/pictures/" + first));

  // The source, and what is already there, stay as they are.
  for (const std::string taken : {"photos", "phone/DCIM"}) {
    const auto again =
        tester.run({"thumbnails", "phone", taken == "photos" ? "photos" : tester.folder / taken});
    EXPECT_EQ(again.status, ExitStatus::usage) << taken;
  }
  EXPECT_EQ(filesIn(tester.folder / "phone/DCIM/100APPLE").size(), 4U);
}

TEST_F(ThumbnailsCommandTest, sheetOfALargeFolder_showsPhotographsOnly) {
  const auto edited = "phone/DCIM/100APPLE/IMG_E0001.BMP";
  tester.folder.write(edited, bitmap());
  for (int i = 10; i < 30; ++i) {
    tester.folder.write("phone/DCIM/100APPLE/IMG_00" + std::to_string(i) + ".BMP", bitmap());
    tester.folder.write("phone/DCIM/100APPLE/Screenshot_" + std::to_string(i) + ".BMP", bitmap());
  }
  const auto result =
      tester.run({"thumbnails", "phone", "photos", "--sheet", "other", "--set", "uiMode=events"});
  EXPECT_EQ(result.status, ExitStatus::someFailed) << result.err;
  const auto pictures = filesIn(tester.folder / "other/pictures");
  EXPECT_EQ(pictures.size(), 19U);  // of twenty, one is no picture
  EXPECT_THAT(pictures, Not(Contains(HasSubstr("Screenshot"))));
  EXPECT_THAT(pictures, Contains(HasSubstr("IMG_E0001")));
  EXPECT_THAT(pictures, Not(Contains(HasSubstr("IMG_0001"))));
}

TEST_F(ThumbnailsCommandTest, phone_givesTheSameAsTheFolder) {
  SimulatedCable cable;
  SimulatedPhone phone;
  phone.root = tester.folder / "phone";
  cable.plugInAll({phone});
  tester.phones = &cable.browser();
  ASSERT_EQ(tester.run({"thumbnails", "phone", "photos"}).status, ExitStatus::someFailed);
  const std::string folder = tester.folder / "other";
  // On a command line, "phone" is the phone on the cable; the tester takes it for its folder.
  ASSERT_EQ(tester.run({"thumbnails", "phone:SIMULATED1", folder}).status, ExitStatus::someFailed);
  ASSERT_EQ(filesIn(folder), filesIn(tester.folder / "photos"));
  for (const std::string& name : filesIn(folder)) {
    EXPECT_EQ(contentOf(folder + "/" + name), contentOf(tester.folder / "photos/" + name));
  }
}

TEST_F(ThumbnailsCommandTest, interrupt_keepsWhatIsThere) {
  tester.isInterrupted = true;
  EXPECT_EQ(tester.run({"thumbnails", "phone", "photos"}).status, ExitStatus::cancelled);
  EXPECT_EQ(tester.run({"thumbnails", "phone", "photos", "--size", "12"}).status,
            ExitStatus::usage);
}

}  // namespace
}  // namespace tavrix::cli
