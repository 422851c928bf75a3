#include "device/thumbnails/DesktopThumbnails.h"

#include <gtest/gtest.h>

#include "device/thumbnails/tests/support/DesktopPng.h"
#include "foundation/tests/support/TemporaryFolder.h"

namespace tavrix {
namespace {

using testbytes::desktopPng;

const DesktopThumbnails::File picture{"/home/jens/photos/me.png", 4321,
                                      Instant{std::chrono::milliseconds{1779267600999}}};

const std::string uri = "Thumb::URI=file:///home/jens/photos/me.png";
const std::string date = "Thumb::MTime=1779267600";

TEST(DesktopThumbnails, thumbnail_isTakenOnlyForThisVersionOfTheFile) {
  for (const auto& texts : {std::vector{uri, date}, {date, uri, "Thumb::Size=4321"}}) {
    EXPECT_TRUE(DesktopThumbnails::isOf(desktopPng(256, texts), picture));
  }
  const std::vector<std::vector<std::string>> others{{},
                                                     {uri},
                                                     {date},
                                                     {uri, "Thumb::MTime=1779267601"},
                                                     {uri, date, "Thumb::Size=4322"},
                                                     {uri, date, "Thumb::MTime=0"},
                                                     {"Thumb::URI=file:///home/jens/me.png", date}};
  for (const auto& texts : others) {
    EXPECT_FALSE(DesktopThumbnails::isOf(desktopPng(256, texts), picture)) << texts.size();
  }
  const std::string whole = desktopPng(256, {uri, date});
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_FALSE(DesktopThumbnails::isOf(whole.substr(0, length), picture)) << length;
  }
}

TEST(DesktopThumbnails, search_returnsTheSmallestThatIsLargeEnough) {
  const TemporaryFolder folder;
  const auto find = [&](std::uint32_t leastSide) {
    return DesktopThumbnails::find(folder.path(), picture, leastSide);
  };
  // The name is the example of the standard.
  const std::string name = "/c6ee772d9e49320e97ec29a7eb5b1697.png";
  EXPECT_EQ(find(1), std::nullopt);
  folder.write("normal" + name, desktopPng(128, {uri, date}));
  folder.write("large" + name, desktopPng(256, {uri, "Thumb::MTime=1"}));
  folder.write("x-large" + name, desktopPng(512, {uri, date}));
  EXPECT_EQ(find(160), desktopPng(512, {uri, date})) << "the large one is outdated";
  folder.write("large" + name, desktopPng(256, {uri, date}));
  EXPECT_EQ(find(160), desktopPng(256, {uri, date}));
  EXPECT_EQ(find(640), std::nullopt);
  EXPECT_EQ(DesktopThumbnails::uriOf("/a b/100%/Ж;(1).jpg"),
            "file:///a%20b/100%25/%D0%96%3B(1).jpg");
}

}  // namespace
}  // namespace tavrix
