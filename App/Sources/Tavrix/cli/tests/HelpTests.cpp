#include <sstream>

#include "cli/CommandTable.h"
#include "cli/help/Help.h"
#include "cli/help/HelpLayout.h"
#include "cli/sentences/SettingMeanings.h"
#include "cli/tests/CommandTester.h"
#include "foundation/Text.h"

namespace tavrix::cli {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

constexpr int terminalColumns = 80;

void expectLinesFit(const std::string& text) {
  EXPECT_FALSE(text.empty());
  std::istringstream lines{text};
  for (std::string line; std::getline(lines, line);) {
    EXPECT_LE(displayWidth(line), terminalColumns) << line;
  }
}

TEST(Help, everyText_fitsIntoEightyColumns) {
  const CommandTester tester;
  for (const std::string language : {"ru", "en"}) {
    expectLinesFit(tester.run({"help", "--lang", language}).out);
    for (const CommandSpec& command : commandTable()) {
      expectLinesFit(tester.run({"help", command.words(), "--lang", language}).out);
    }
    for (const auto& setting : sentences::settingMeanings) {
      expectLinesFit(tester.run({"help", std::string{setting.key}, "--lang", language}).out);
    }
  }
}

TEST(Help, tables_fitIntoATerminalOfEightyColumns) {
  CommandTester tester;
  tester.addPhone(smallSnapshot, {"IMG_0001.HEIC"});
  tester.outColumns = terminalColumns;
  tester.run({"transfer", "phone", "photos with a rather long name of the folder"});
  for (const std::string language : {"ru", "en"}) {
    for (std::vector<std::string> call : {std::vector<std::string>{"settings"},
                                          {"settings", "--all"},
                                          {"history"},
                                          {"history", "--asset", "100APPLE/IMG_0002.JPG"},
                                          {"history", "last", "--outcome", "failed"}}) {
      call.insert(call.end(), {"--lang", language});
      std::string text = tester.run(call).out;
      // A path in the heading of a record stays whole, so that it can be copied.
      const std::string path = tester.folder / "photos with a rather long name of the folder";
      if (const auto at = text.find(path); at != text.npos) text.replace(at, path.size(), "path");
      expectLinesFit(text);
    }
  }
}

TEST(Help, topic_isACommandASettingOrBoth) {
  const CommandTester tester;
  const auto help = [&](std::vector<std::string> topic) {
    topic.insert(topic.begin(), "help");
    topic.insert(topic.end(), {"--lang", "en"});
    return tester.run(std::move(topic));
  };
  EXPECT_EQ(help({}).out, tester.run({"--help", "--lang", "en"}).out);
  EXPECT_EQ(help({"marker"}).out, tester.run({"marker", "--help", "--lang", "en"}).out);
  EXPECT_EQ(help({"marker", "rebuild"}).out, help({"marker"}).out);
  EXPECT_THAT(help({"eventGapHours"}).out,
              AllOf(StartsWith("eventGapHours — hours"), HasSubstr("Initially      4\n"),
                    HasSubstr("tavrix settings set eventGapHours VALUE\n")));
  EXPECT_THAT(help({"uiMode"}).out, HasSubstr("cannot be saved"));
  EXPECT_THAT(help({"places"}).out, AllOf(StartsWith("tavrix places SOURCE"),
                                          HasSubstr("\nplaces — transfer only shots")));
  EXPECT_THAT(help({"evntGapHours"}).err, HasSubstr("Did you mean tavrix help eventGapHours?"));
  EXPECT_THAT(help({"markr", "rebuild"}).err, HasSubstr("tavrix help marker rebuild?"));
  EXPECT_THAT(help({"xyzzy"}).err, HasSubstr("no command or setting “xyzzy”"));
  EXPECT_EQ(help({"xyzzy"}).status, ExitStatus::usage);
}

TEST(HelpLayout, longLines_areBrokenBelowTheirOwnDescription) {
  EXPECT_EQ(laidOut("A title that is too long:\n"
                    "  --one  a word or two\n"
                    "  --two-more=VALUES of several words\n"
                    "                    in all\n"
                    "\n"
                    "Examples:\n"
                    "  tavrix plan A --set 'x=1 2' --lang en | (jq . && true)\n",
                    30),
            "A title that is too long:\n"
            "  --one  a word or two\n"
            "  --two-more=VALUES of several\n"
            "                    words in\n"
            "                    all\n"
            "\n"
            "Examples:\n"
            "  tavrix plan A \\\n"
            "    --set 'x=1 2' --lang en \\\n"
            "    | (jq . && true)\n");
}

}  // namespace
}  // namespace tavrix::cli
