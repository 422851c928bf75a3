#include "cli/tests/CommandTester.h"

namespace tavrix::cli {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

struct DifferingFilesCommand : testing::Test {
  DifferingFilesCommand() {
    tester.addPhone(smallSnapshot, smallMedia);
    tester.folder.write("photos/2026-05-21/IMG_0003.MOV", "of another program");
    transfer();
    tester.folder.write("photos/2026-05-20/IMG_0001.HEIC", "");
    tester.folder.write("photos/2026-05-20/IMG_0001.MOV", "0123");
    tester.folder.write("photos/No date/IMG_0004.PNG", "0123456789, edited");
    tester.time += std::chrono::hours{1};
  }

  CommandResult transfer(std::vector<std::string> more = {}) const {
    return tester.run({"transfer", "phone", "photos", more.empty() ? "--quiet" : more.front()});
  }

  CommandTester tester;
};

TEST_F(DifferingFilesCommand, plan_namesEachKind_inBothLanguages) {
  const CommandResult russian = tester.run({"plan", "phone", "photos"});
  EXPECT_THAT(
      russian.err,
      AllOf(HasSubstr("Опустели после копирования: 1 файл («2026-05-20/IMG_0001.HEIC»)"),
            HasSubstr("похоже, повреждены: 1 файл («2026-05-20/IMG_0001.MOV»)"),
            HasSubstr("Изменены в папке после копирования: 1 файл («No date/IMG_0004.PNG»)"),
            HasSubstr("но другого размера: 1 файл («2026-05-21/IMG_0003.MOV»)")));
  EXPECT_THAT(russian.out, AllOf(HasSubstr("Другого размера"), HasSubstr("другого размера")));
  const CommandResult english = tester.run({"plan", "phone", "photos", "--lang", "en"});
  EXPECT_THAT(english.err, AllOf(HasSubstr("probably damaged: 1 file (“2026-05-20/IMG_0001.MOV”)"),
                                 HasSubstr("under numbered names.")));
  // A choice without these files says nothing of them.
  EXPECT_THAT(tester.run({"plan", "phone", "photos", "--exclude", "*"}).err, IsEmpty());
}

TEST_F(DifferingFilesCommand, transfer_copiesOnlyTheEmptiedFileAgain_andRecordsTheOthers) {
  const JsonValue result = transfer({"--json"}).json();
  const auto& files = *result.member("report")->member("files")->asArray();
  ASSERT_EQ(files.size(), 1U);
  EXPECT_EQ(*files[0].member("path")->asString(), "2026-05-20/IMG_0001 (2).HEIC");
  std::string states;
  for (const JsonValue& each : *result.member("differing")->asArray()) {
    states += *each.member("state")->asString() + " ";
  }
  EXPECT_EQ(states, "emptied damaged foreign changed ");
  EXPECT_EQ(tester.folder.read("photos/2026-05-20/IMG_0001 (2).HEIC"), "0123456789");
  EXPECT_EQ(tester.folder.read("photos/2026-05-20/IMG_0001.HEIC"), "");

  const std::string record = tester.run({"history", tester.recordID().text(), "--json"}).out;
  EXPECT_THAT(record, AllOf(HasSubstr(R"("code": "damaged")"), HasSubstr(R"("code": "foreign")"),
                            HasSubstr("Изменены в папке после копирования: 1 файл")));
  tester.time += std::chrono::hours{1};
  const CommandResult next = transfer({"--json"});
  EXPECT_THAT(*next.json().member("report")->member("files")->asArray(), IsEmpty());
  EXPECT_THAT(next.err, Not(HasSubstr("Опустели")));
}

}  // namespace
}  // namespace tavrix::cli
