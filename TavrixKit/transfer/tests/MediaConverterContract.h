#pragma once

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <memory>

#include "foundation/tests/support/TemporaryFolder.h"
#include "transfer/MediaConverter.h"
#include "transfer/tests/TestLibrary.h"

namespace tavrix {

/// A converter under test, with a file that it converts.
struct ConverterUnderTest {
  std::function<std::unique_ptr<MediaConverter>()> make;
  std::string source;
};

/// The requirements that every MediaConverter meets.
class MediaConverterContract : public testing::TestWithParam<ConverterUnderTest> {
 protected:
  std::uint64_t convert(std::stop_token stop = {}) {
    return converter->convert(
        assetOf("100APPLE/IMG_1.PNG"), planned_conversion::Jpeg{0.8}, *opened, "in.part",
        "out.part", [&](double fraction) { fractions.push_back(fraction); }, std::move(stop));
  }

  TemporaryFolder folder;
  const std::unique_ptr<Folder> opened = openFolder(folder.path());
  std::unique_ptr<MediaConverter> converter = GetParam().make();
  std::vector<double> fractions;
};

TEST_P(MediaConverterContract, conversion_givesTheSizeOfItsResult_andLeavesTheSource) {
  folder.write("in.part", GetParam().source);
  const std::uint64_t size = convert();
  EXPECT_EQ(size, folder.read("out.part").size());
  EXPECT_EQ(folder.read("in.part"), GetParam().source);
  EXPECT_GT(folder.read("out.part").size(), 0U);
  EXPECT_TRUE(std::is_sorted(fractions.begin(), fractions.end()));
  for (const double fraction : fractions) EXPECT_TRUE(fraction >= 0 && fraction <= 1) << fraction;
}

TEST_P(MediaConverterContract, whatIsNoPicture_isAnErrorOfThatFileAlone) {
  for (const std::string& bytes : {std::string{}, std::string{"no picture"}}) {
    folder.write("in.part", bytes);
    std::filesystem::remove(folder / "out.part");
    EXPECT_THROW(convert(), ConversionError);
  }
  folder.write("in.part", GetParam().source);
  std::filesystem::remove(folder / "out.part");
  const std::uint64_t size = convert();
  EXPECT_EQ(size, folder.read("out.part").size());
}

TEST_P(MediaConverterContract, aStopThatWasRequested_endsIt) {
  folder.write("in.part", GetParam().source);
  std::stop_source stop;
  stop.request_stop();
  EXPECT_THROW(convert(stop.get_token()), ConversionError);
}

}  // namespace tavrix
