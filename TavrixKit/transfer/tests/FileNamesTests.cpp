#include "transfer/FileNames.h"

#include <gtest/gtest.h>

namespace tavrix {
namespace {

TEST(FileNames, numbers_standBeforeTheExtension) {
  EXPECT_EQ(numberedName("IMG_1.HEIC", 1), "IMG_1.HEIC");
  EXPECT_EQ(numberedName("IMG_1.HEIC", 2), "IMG_1 (2).HEIC");
  EXPECT_EQ(numberedName("noextension", 12), "noextension (12)");
  EXPECT_EQ(numberedName(".jpg", 2), ".jpg (2)");
  EXPECT_EQ(numberedName("a.b c", 2), "a.b c (2)");
  EXPECT_EQ(numberedPath("a.b/IMG_1", 2), "a.b/IMG_1 (2)");
  EXPECT_EQ(numberedName(std::string(255, 'x'), 2), std::string(251, 'x') + " (2)");
}

TEST(FileNames, numberedForms_areThePathAndItsNumbersOnly) {
  for (const char* form : {"d/IMG.JPG", "d/IMG (2).JPG", "d/IMG (10).JPG"}) {
    EXPECT_TRUE(isNumberedForm(form, "d/IMG.JPG")) << form;
  }
  for (const char* other : {"d/IMG (1).JPG", "d/IMG (02).JPG", "d/IMG (2) (2).JPG", "d/IMG (x).JPG",
                            "d/IMG ().JPG", "d/IMG (2).jpg", "e/IMG (2).JPG", "IMG (2).JPG",
                            "d/IMG(2).JPG", "d/ (2).JPG", ".JPG", ""}) {
    EXPECT_FALSE(isNumberedForm(other, "d/IMG.JPG")) << other;
  }
}

TEST(FileNames, partPaths_alwaysFitAndDiffer) {
  EXPECT_EQ(partPath("d/IMG_1.HEIC"), "d/IMG_1.HEIC.part");
  const std::string stem(245, 'x');
  const std::string first = partPath("d/" + stem + "a.HEIC");
  const std::string second = partPath("d/" + stem + "b.HEIC");
  EXPECT_NE(first, second);
  EXPECT_EQ(first.size(), 2 + longestFileName);
  EXPECT_TRUE(first.ends_with(".part"));
}

TEST(FileNames, extension_isReplacedOrAdded) {
  EXPECT_EQ(withExtension("IMG_1.HEIC", "jpg"), "IMG_1.jpg");
  EXPECT_EQ(withExtension("IMG_1", "jpg"), "IMG_1.jpg");
  EXPECT_EQ(lowerExtension("IMG_1.HEIC"), "heic");
  EXPECT_EQ(fittingName(std::string(300, 'x') + ".mov"), std::string(251, 'x') + ".mov");
}

}  // namespace
}  // namespace tavrix
