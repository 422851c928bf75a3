#include "naming/FileNamePrefix.h"

#include <gmock/gmock.h>

namespace tavrix {
namespace {

TEST(FileNamePrefix, mode_decidesThePrefix) {
  struct Row {
    FileNamePrefixMode mode;
    const char* custom;
    const char* phone;
    const char* expected;
  };
  const Row rows[] = {
      {FileNamePrefixMode::none, "VK_", "iPhone", ""},
      {FileNamePrefixMode::phone, "VK_", "iPhone", "iPhone "},
      {FileNamePrefixMode::phone, "VK_", "", ""},
      {FileNamePrefixMode::phone, "", "Аня/Дом\n", "Аня-Дом- "},
      {FileNamePrefixMode::custom, "VK_", "iPhone", "VK_"},
      {FileNamePrefixMode::custom, "", "iPhone", ""},
      {FileNamePrefixMode::custom, " ../a: ", "iPhone", " ..-a- "},
      {FileNamePrefixMode::custom, "a\xFF", "iPhone", "a\uFFFD"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(fileNamePrefix(row.mode, row.custom, row.phone), row.expected) << row.custom;
  }
}

TEST(FileNamePrefix, mode_hasATextForm) {
  const std::pair<FileNamePrefixMode, const char*> rows[] = {
      {FileNamePrefixMode::none, "none"},
      {FileNamePrefixMode::phone, "phone"},
      {FileNamePrefixMode::custom, "custom"}};
  for (const auto& [mode, text] : rows) {
    EXPECT_EQ(textOf(mode), text);
    EXPECT_EQ(fileNamePrefixModeOf(text), mode);
  }
  EXPECT_EQ(fileNamePrefixModeOf("Phone"), std::nullopt);
}

}  // namespace
}  // namespace tavrix
