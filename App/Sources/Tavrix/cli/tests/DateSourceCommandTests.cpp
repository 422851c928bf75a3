#include <filesystem>

#include "cli/tests/CommandTester.h"
#include "device/metadata/tests/support/MediaBytes.h"

namespace tavrix::cli {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

/// A folder of three pictures, dated by the camera, by the name and by the file.
struct DateSourceCommandTest : testing::Test {
  DateSourceCommandTest() {
    using namespace testbytes;
    add("100APPLE/IMG_0001.JPG",
        jpeg(exifSegment(capture("2026:05:20 12:00:00", "+00:00")) + frame(8, 6)));
    add("100APPLE/IMG-20190412-WA0003.jpg", jpeg(frame(8, 6)));
    add("100APPLE/IMG_0002.JPG", jpeg(frame(8, 6)));
  }
  /// Adds a picture with the modification time 2026-05-23T10:00:00Z.
  void add(const std::string& path, const std::string& bytes) const {
    const std::string name = "phone/DCIM/" + path;
    tester.folder.write(name, bytes);
    std::filesystem::last_write_time(
        tester.folder / name, std::chrono::file_clock::from_sys(
                                  std::chrono::sys_seconds{std::chrono::seconds{1779530400}}));
  }
  std::string groups(std::vector<std::string> more) const {
    more.insert(more.begin(), {"groups", "phone"});
    return tester.run(std::move(more)).out;
  }
  std::vector<std::string> dates(const std::vector<std::string>& more) const {
    std::vector<std::string> call{"catalog", "phone", "--json"};
    call.insert(call.end(), more.begin(), more.end());
    std::vector<std::string> lines;
    const JsonValue catalogue = tester.run(call).json();
    for (const JsonValue& file : *catalogue.asArray()) {
      lines.push_back(*file.member("captureDate")->asString() + " " +
                      *file.member("dateSource")->asString());
    }
    return lines;
  }

  CommandTester tester;
};

TEST_F(DateSourceCommandTest, catalogue_hasTheSourceOfEachDate) {
  EXPECT_THAT(dates({"--set", "timeZoneID=Asia/Tokyo"}),
              ElementsAre("2019-04-12T03:00:00Z name", "2026-05-20T12:00:00Z metadata",
                          "2026-05-23T10:00:00Z file"));
  EXPECT_THAT(dates({"--set", "datesFromNames=false"}),
              ElementsAre("2026-05-23T10:00:00Z file", "2026-05-20T12:00:00Z metadata",
                          "2026-05-23T10:00:00Z file"));
}

TEST_F(DateSourceCommandTest, groups_countTheShotsThatOnlyTheirFilesDate) {
  EXPECT_THAT(groups({"--lang", "ru"}), HasSubstr("\nУ 1 снимка известна только дата файла.\n"));
  EXPECT_THAT(groups({"--lang", "en", "--set", "datesFromNames=false"}),
              HasSubstr("\nFor 2 shots, only the date of the file is known.\n"));
  const std::string explained = groups({"--lang", "en", "--explain"});
  EXPECT_THAT(explained, HasSubstr("IMG-20190412-WA0003.jpg  2019-04-12 12:00:00  file name\n"));
  EXPECT_THAT(explained, HasSubstr("2026-05-23 10:00:00  date of the file\n"));
  EXPECT_THAT(groups({"--lang", "en", "--exclude", "IMG_0002.JPG"}), Not(HasSubstr("the file")));
}

TEST_F(DateSourceCommandTest, copyThatItsFileDated_isKnownWhenItsNameDatesIt) {
  const auto transfer = [&](const std::string& names) {
    return tester.run({"transfer", "phone", "photos", "--json", "--set", "uiMode=flat", "--set",
                       "datesFromNames=" + names});
  };
  EXPECT_EQ(*transfer("false").json().member("report")->member("copied")->asNumber(), 3);
  EXPECT_THAT(transfer("true").out, Not(HasSubstr("(2)")));
}

}  // namespace
}  // namespace tavrix::cli
