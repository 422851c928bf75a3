#include "device/cable/PhoneCatalogue.h"

#include <gmock/gmock.h>

#include "device/cable/tests/support/SimulatedCable.h"
#include "device/metadata/tests/support/SampleFiles.h"

namespace tavrix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct PhoneCatalogueTest : testing::Test {
  FolderCatalogue read() const {
    const auto files = cable.browser().openFiles(SimulatedPhone{}.deviceID, {});
    return PhoneCatalogue::read(*files, setup());
  }
  MetadataPass::Setup setup() const {
    return {.phoneKey = "phone", .directory = state / "state", .now = [] { return Instant{}; }};
  }

  SimulatedCable cable;
  TemporaryFolder state;
};

/// Returns the catalogue of the same files read as a folder on the disk.
FolderCatalogue onDisk(const SimulatedCable& cable) {
  return FolderCatalogue::read(
      cable.root() + "/DCIM",
      {.phoneKey = "disk", .directory = std::nullopt, .now = [] { return Instant{}; }});
}

TEST_F(PhoneCatalogueTest, phone_tellsTheSameAsItsFilesInAFolder) {
  for (const auto& sample : testbytes::sampleFiles()) {
    cable.write("100APPLE/" + sample.name, sample.bytes);
  }
  cable.write("101APPLE/IMG_0001.AAE", "edit");
  cable.write("101APPLE/.hidden", "x");
  std::string deep = "102APPLE";
  for (int i = 0; i < 40; ++i) deep += "/d";
  cable.write(deep + "/a.JPG", "x");
  cable.plugIn();
  const FolderCatalogue catalogue = read();
  const FolderCatalogue expected = onDisk(cable);
  EXPECT_EQ(catalogue.items, expected.items);
  EXPECT_EQ(catalogue.leftOut, expected.leftOut);
  EXPECT_THAT(catalogue.leftOut, testing::SizeIs(2)) << "one is hidden, and one is too deep";
  EXPECT_EQ(catalogue.progress.read, catalogue.items.size());
}

TEST_F(PhoneCatalogueTest, reading_costsFourCallsAFileAndTheSecondTimeOne) {
  for (const auto& sample : testbytes::sampleFiles()) {
    // Data further inside a file costs a seek and a second range.
    if (sample.bytes.size() > 64 * 1024) continue;
    cable.write("100APPLE/" + sample.name, sample.bytes);
  }
  auto& simulator = cable.plugIn();
  const FolderCatalogue first = read();
  // The calls for a file are status, open, one range, close.
  ASSERT_GT(first.items.size(), 10U);
  EXPECT_LE(simulator.fileCalls(), 4 * first.items.size() + 8);
  const auto before = simulator.fileCalls();
  const FolderCatalogue second = read();
  EXPECT_EQ(second.items, first.items);
  EXPECT_EQ(second.progress.hits, second.items.size());
  // One call per file, and a few for the listings of DCIM and its folder.
  EXPECT_LE(simulator.fileCalls() - before, second.items.size() + 8);
}

TEST_F(PhoneCatalogueTest, phoneThatLeaves_losesNothingThatWasRead) {
  const std::string picture = testbytes::sampleFiles().front().bytes;
  for (int i = 0; i < 10; ++i) {
    cable.write("100APPLE/" + std::to_string(i) + ".JPG", picture);
  }
  cable.plugIn([&](SimulatedPhone& phone) { phone.vanishesAfterBytes = 5 * picture.size() + 1; });
  try {
    read();
    ADD_FAILURE();
  } catch (const PhoneError& error) {
    EXPECT_EQ(error.kind(), PhoneError::Kind::gone);
  }
  cable.plugIn();
  const FolderCatalogue catalogue = read();
  EXPECT_EQ(catalogue.progress.hits, 5U);
  EXPECT_EQ(catalogue.items, onDisk(cable).items);
}

TEST_F(PhoneCatalogueTest, unreadableFile_staysInTheCatalogueWithoutMetadata) {
  cable.write("100APPLE/a.JPG", testbytes::sampleFiles().front().bytes);
  cable.write("100APPLE/b.JPG", testbytes::sampleFiles().front().bytes);
  cable.plugIn([](SimulatedPhone& phone) { phone.unreadable = {"a.JPG"}; });
  const FolderCatalogue catalogue = read();
  ASSERT_EQ(catalogue.items.size(), 2U);
  EXPECT_THAT(catalogue.unreadable, ElementsAre("100APPLE/a.JPG"));
  EXPECT_FALSE(catalogue.items[0].px);
  EXPECT_TRUE(catalogue.items[1].px);
}

TEST_F(PhoneCatalogueTest, phoneWithoutPictures_hasAnEmptyCatalogue) {
  cable.plugIn();
  EXPECT_THAT(read().items, IsEmpty());
}

}  // namespace
}  // namespace tavrix
