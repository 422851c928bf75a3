#include "media/FileGlob.h"

#include <gtest/gtest.h>

namespace tavrix {
namespace {

TEST(FileGlob, pattern_matchesNamesOrWholeIDs) {
  struct Row {
    std::string pattern;
    std::string id;
    bool matches;
  };
  const std::string still = "100APPLE/IMG_1400.HEIC";
  const std::vector<Row> rows{
      {"*.heic", still, true},
      {"*.AAE", still, false},
      {"IMG_1400.*", still, true},
      {"IMG_14?0.HEIC", still, true},
      {"IMG_140?.HEI", still, false},
      {"*4*0.H*C", still, true},
      {"100APPLE*", still, false},
      {"100APPLE/*", still, true},
      {"*/100APPLE/*", still, true},
      {"*/00APPLE/*", still, false},
      {"*/100APPLE/*", "DCIM/100APPLE/IMG_1.JPG", true},
      {"DCIM/*.JPG", "DCIM/100APPLE/IMG_1.JPG", true},
      {"IMG_[12]4[0-9][!1-9].HEIC", still, true},
      {"IMG_[!1]*", still, false},
      {"[]a]", "]", true},
      {"[ab", "[AB", true},
      {"\\*", "*", true},
      {"\\*", "a", false},
      {"Снимок?.JPG", "100APPLE/СНИМОКЯ.jpg", true},
      {"*", "", true},
      {"", still, false},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(FileGlob{row.pattern}.matches(row.id), row.matches) << row.pattern << " " << row.id;
  }
  // A matcher that tries every division among the stars would not end.
  EXPECT_FALSE(FileGlob{"*a*a*a*a*a*a*a*a*a*a*b"}.matches(std::string(5000, 'a')));
}

}  // namespace
}  // namespace tavrix
