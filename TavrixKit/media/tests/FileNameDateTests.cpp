#include "media/FileNameDate.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <fstream>
#include <map>

#include "media/SnapshotItem.h"

namespace tavrix {
namespace {

/// Returns the second columns of the tables of docs/dates.md by the names in their first ones,
/// those below a heading.
std::map<std::string, std::string> namesBelow(const std::string& heading) {
  std::ifstream page{TAVRIX_DOCS "/dates.md"};
  std::map<std::string, std::string> rows;
  bool isBelow = false;
  for (std::string line; std::getline(page, line);) {
    if (line.starts_with("## ")) isBelow = line == "## " + heading;
    if (!isBelow || !line.starts_with("| `")) continue;
    const auto nameEnd = line.find("` | ");
    const auto textEnd = line.find(" |", nameEnd + 4);
    rows[line.substr(3, nameEnd - 3)] = line.substr(nameEnd + 4, textEnd - nameEnd - 4);
  }
  return rows;
}

/// Returns a date as the page writes it, or "none".
std::string shown(const std::optional<FileNameDate>& date) {
  if (!date) return "none";
  std::string text = iso8601(Instant{date->at.time_since_epoch()});
  text.replace(10, 1, " ").pop_back();
  return date->isUTC ? text + " UTC" : text;
}

TEST(FileNameDate, everyPatternOfThePage_isReadAsItSays) {
  const auto dated = namesBelow("Patterns");
  EXPECT_GT(dated.size(), 40U);
  for (const auto& [name, date] : dated) EXPECT_EQ(shown(dateOfFileName(name)), date) << name;
  const auto undated = namesBelow("Names without a date");
  EXPECT_GT(undated.size(), 20U);
  for (const auto& [name, why] : undated) EXPECT_EQ(shown(dateOfFileName(name)), "none") << name;
}

TEST(FileNameDate, spacesThatNewSystemsWriteBeforeTheHalfOfTheDay_areSpaces) {
  for (const char* const space : {"", " ", "\u00A0", "\u202F"}) {
    const std::string name = fmt::format("Screenshot 2020-01-01 at 1.11.12{}PM.png", space);
    EXPECT_EQ(shown(dateOfFileName(name)), "2020-01-01 13:11:12") << name;
  }
}

TEST(FileNameDate, shot_isDatedByItsMetadataThenItsNameThenItsFile) {
  const TimeZone moscow = TimeZone::load("Europe/Moscow").value();
  SnapshotItem item;
  item.name = "IMG_20190412_101112.jpg";
  item.kind = "photo";
  item.itemDate = 1'600'000'000;
  const auto shownAs = [&](DatesFromNames names) {
    const MediaAsset asset = item.mediaAsset("id", moscow, names);
    const auto text = [](const auto& date) { return date ? iso8601(*date) : "none"; };
    return fmt::format("{} {} {}", asset.dateSource() ? textOf(*asset.dateSource()) : "none",
                       text(asset.captureDate()), text(asset.fileDate()));
  };
  using enum DatesFromNames;
  EXPECT_EQ(shownAs(used), "name 2019-04-12T07:11:12Z 2020-09-13T12:26:40Z");
  EXPECT_EQ(shownAs(ignored), "file 2020-09-13T12:26:40Z 2020-09-13T12:26:40Z");
  item.exifDate = "2018:01:02 03:04:05";
  EXPECT_EQ(shownAs(used), "metadata 2018-01-02T00:04:05Z none");
  item.exifDate = "2018:13:02 03:04:05";
  item.name = "PXL_20190412_101112345.jpg";
  EXPECT_EQ(shownAs(used), "name 2019-04-12T10:11:12.345Z 2020-09-13T12:26:40Z");
  item.name = "IMG_1234.jpg";
  EXPECT_EQ(shownAs(used), "file 2020-09-13T12:26:40Z 2020-09-13T12:26:40Z");
  item.itemDate.reset();
  EXPECT_EQ(shownAs(used), "none none none");
}

}  // namespace
}  // namespace tavrix
