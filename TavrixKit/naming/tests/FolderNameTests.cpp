#include "naming/FolderName.h"

#include <gmock/gmock.h>

namespace tavrix {
namespace {

std::string repeated(std::string_view text, int count) {
  std::string result;
  for (int i = 0; i < count; ++i) result += text;
  return result;
}

TEST(FolderName, sanitise_makesASafeName) {
  const std::pair<std::string, std::string> rows[] = {
      {"2026-05-16 — Рим", "2026-05-16 — Рим"},
      {"a/b:c", "a-b-c"},
      {R"(/\:?%*|"<>)", "----------"},
      {"a\x01\x1F\x7F\u0080\u009F\nb", "a------b"},
      {std::string{"a\0b", 3}, "a-b"},
      {"a\u00A0b\u00C2c", "a\u00A0b\u00C2c"},            // neighbours of the control characters
      {"\u200Fa\u00ADb\u200D", "\u200Fa\u00ADb\u200D"},  // format characters are kept
      {"\u00A0\u3000 a b\u2003", "a b"},
      {"\ta", "-a"},  // the tab is replaced before white space is trimmed
      {"..hidden", "hidden"},
      {". hidden", " hidden"},  // trimmed before the full stop is removed
      {"name. ", "name"},
      {"name . . ", "name"},
      {"name.\u00A0", "name"},
      {".\u3000.a", "\u3000.a"},
      {"...", "untitled"},
      {" . . ", "untitled"},
      {"", "untitled"},
      {"a\xFFz\xD0", "a\uFFFDz\uFFFD"},
      {"\xC2", "\uFFFD"},
  };
  for (const auto& [text, expected] : rows) EXPECT_EQ(FolderName::sanitise(text), expected) << text;
}

TEST(FolderName, longName_isCutBetweenWholeCharacters) {
  const std::string family = "👨\u200D👩\u200D👧";  // 18 bytes, one character
  const std::string accented = "e\u0301";           // 3 bytes, one character
  const std::pair<std::string, std::string> rows[] = {
      {repeated("a", 235), repeated("a", 235)},
      {repeated("a", 236), repeated("a", 235)},
      {repeated("ы", 150), repeated("ы", 117)},
      {repeated("a", 218) + family, repeated("a", 218)},
      {repeated("a", 217) + family + "b", repeated("a", 217) + family},
      {repeated("a", 233) + accented, repeated("a", 233)},
      {repeated("a", 234) + " bc", repeated("a", 234)},
      {"." + repeated("a", 235), repeated("a", 235)},
      {"a" + repeated("\u0301", 200), "untitled"},
  };
  for (const auto& [text, expected] : rows) EXPECT_EQ(FolderName::sanitise(text), expected) << text;
}

}  // namespace
}  // namespace tavrix
