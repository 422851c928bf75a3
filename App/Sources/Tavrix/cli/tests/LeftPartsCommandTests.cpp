#include "cli/tests/CommandTester.h"
#include "foundation/files/Folder.h"
#include "runs/Destination.h"

namespace tavrix::cli {
namespace {

using testing::HasSubstr;
using testing::Not;

/// Leaves a destination as a killed run does: one file landed, of one the two names of its bytes
/// exist, one is unfinished; and beside them are ".part" files of other origin.
void leaveParts(const CommandTester& tester) {
  tester.folder.write("photos/2026-05-20/IMG_0002.JPG", "0123456789");
  std::filesystem::create_hard_link(tester.folder / "photos/2026-05-20/IMG_0002.JPG",
                                    tester.folder / "photos/2026-05-20/IMG_0002.JPG.part");
  tester.folder.write("photos/2026-05-21/IMG_0003.MOV.part", "01234");
  tester.folder.write("photos/2026-05-21/IMG_0003.MOV.converted.part", "0");
  tester.folder.write("photos/2026-05-21/IMG_0009.MOV.part", "of a browser");
  tester.folder.write("photos/No date/IMG_0004.PNG", "0123456789");
  tester.folder.write("photos/No date/IMG_0004.PNG.part", "of a browser");
  const PhoneIdentity phone = snapshotPhone("iPhone");
  const auto claim = [](const std::string& path, const std::string& id) {
    return DestinationMarker::FileRecord{path, 0, std::nullopt, id, std::nullopt};
  };
  DestinationMarker::PhoneRecord record{1, phone.hash, phone.label, phone.model, {}, {}, {}};
  record.files = {claim("2026-05-20/IMG_0002.JPG", "100APPLE/IMG_0002.JPG"),
                  claim("2026-05-21/IMG_0003.MOV", "100APPLE/IMG_0003.MOV"),
                  {"No date/IMG_0004.PNG", 10, "digest", "IMG_0004.PNG", std::nullopt}};
  DestinationMarker::save(*openFolder(tester.folder / "photos"), record);
}

TEST(LeftPartsCommand, partsOfAKilledRun_areRemovedByARunOfAnotherLayout) {
  CommandTester tester;
  tester.addPhone(smallSnapshot, smallMedia);
  leaveParts(tester);
  const std::vector<std::string> call{"transfer", "phone", "photos", "--set",
                                      "separatePhotoVideo=true"};
  const CommandResult result = tester.run(call);
  EXPECT_EQ(result.status, ExitStatus::done) << result.err;
  EXPECT_THAT(result.out, HasSubstr("недописанные файлы (3 файла); они убраны."));
  EXPECT_FALSE(tester.folder.has("photos/2026-05-20/IMG_0002.JPG.part"));
  EXPECT_FALSE(tester.folder.has("photos/2026-05-21/IMG_0003.MOV.part"));
  EXPECT_FALSE(tester.folder.has("photos/2026-05-21/IMG_0003.MOV.converted.part"));
  EXPECT_EQ(tester.folder.read("photos/2026-05-20/IMG_0002.JPG"), "0123456789");
  EXPECT_EQ(tester.folder.read("photos/2026-05-21/IMG_0009.MOV.part"), "of a browser");
  EXPECT_EQ(tester.folder.read("photos/No date/IMG_0004.PNG.part"), "of a browser");
  EXPECT_THAT(tester.run(call).out, Not(HasSubstr("недописанные")));
}

}  // namespace
}  // namespace tavrix::cli
