#include "cli/manual/Completions.h"

#include <gmock/gmock.h>

#include <cstdio>
#include <sstream>

#include "cli/CommandTable.h"
#include "cli/manual/CommandFacts.h"
#include "foundation/tests/support/TemporaryFolder.h"

namespace tavrix::cli {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

/// Completes command lines in a real bash, in a folder that holds "DCIM copy/", "photos/" and
/// "notes.txt".
struct BashCompletion : testing::Test {
  BashCompletion() {
    folder.write("tavrix.bash", bashCompletion());
    folder.write("work/notes.txt", "");
    std::filesystem::create_directories(folder / "work/DCIM copy");
    std::filesystem::create_directories(folder / "work/photos");
  }

  /// Returns the replies for words as bash splits them, which it also does at "=".
  std::vector<std::string> replies(const std::string& words) const {
    const std::string script = "cd '" + folder / "work" + "' && source ../tavrix.bash && " +
                               "COMP_WORDS=(" + words +
                               ") && COMP_CWORD=$((${#COMP_WORDS[@]} - 1)) && _tavrix && "
                               "printf '%s\\n' \"${COMPREPLY[@]}\"";
    folder.write("call.bash", script);
    std::FILE* const bash = ::popen(("bash " + folder / "call.bash").c_str(), "r");
    std::string text;
    for (int c = std::fgetc(bash); c != EOF; c = std::fgetc(bash)) text += static_cast<char>(c);
    EXPECT_EQ(::pclose(bash), 0) << words;
    std::vector<std::string> lines;
    std::istringstream stream{text};
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
  }

  TemporaryFolder folder{};
};

TEST_F(BashCompletion, wordsAndOptions_areThoseOfTheTable) {
  std::vector<std::string> first;
  for (const OfferedWord& each : firstWords()) first.push_back(each.word);
  EXPECT_EQ(replies("tavrix ''"), first);
  EXPECT_THAT(replies("tavrix --lang ru marker ''"), ElementsAre("rebuild"));
  EXPECT_THAT(replies("tavrix groups phone --exp"), ElementsAre("--explain", "--explain=all"));
  EXPECT_THAT(replies("tavrix --js"), ElementsAre("--json"));
  EXPECT_THAT(replies("tavrix cache --js"), ElementsAre("--json"));
  EXPECT_THAT(replies("tavrix history --outcome f"), ElementsAre("failed"));
  EXPECT_THAT(replies("tavrix --lang = r"), ElementsAre("ru"));
  EXPECT_THAT(replies("tavrix help eventGapH"), ElementsAre("eventGapHours"));
}

TEST_F(BashCompletion, foldersAndFiles_areOfferedWhereTheyFit) {
  EXPECT_THAT(replies("tavrix plan ''"),
              testing::UnorderedElementsAre("phone", "DCIM copy", "photos"));
  EXPECT_THAT(replies("tavrix plan phone ph"), ElementsAre("photos"));
  EXPECT_THAT(replies("tavrix marker rebuild phone D"), ElementsAre("DCIM copy"));
  EXPECT_THAT(replies("tavrix history --path n"), ElementsAre("notes.txt"));
  EXPECT_THAT(replies("tavrix history --dest n"), ElementsAre(""));
}

TEST_F(BashCompletion, settings_areOfferedWithTheirChoices) {
  EXPECT_THAT(replies("tavrix groups phone --set pack"),
              ElementsAre("packAsZip=", "packPerGroup="));
  EXPECT_THAT(replies("tavrix groups phone --set uiMode ="),
              ElementsAre("byDate", "events", "trips", "flat"));
  EXPECT_THAT(replies("tavrix groups --set uiMode = t"), ElementsAre("trips"));
  EXPECT_THAT(replies("tavrix groups --set = uiMode = t"), ElementsAre("trips"));
  EXPECT_THAT(replies("tavrix settings set uiL"), ElementsAre("uiLanguage"));
  EXPECT_THAT(replies("tavrix settings set uiM"), ElementsAre(""));
  EXPECT_THAT(replies("tavrix settings set splitByDistance ''"), ElementsAre("true", "false"));
}

TEST(Completions, everyShell_knowsEveryOptionAndSetting) {
  for (const std::string& script : {bashCompletion(), zshCompletion(), fishCompletion()}) {
    for (const CommandSpec& command : commandTable()) {
      EXPECT_THAT(script, HasSubstr("'" + command.words() + "'"));
      for (const CommandOption& option : command.options) {
        EXPECT_THAT(script, HasSubstr("'" + std::string{option.name} + "\t"));
      }
    }
    for (const SettingDescription& setting : documentedSettings()) {
      EXPECT_THAT(script, HasSubstr("'" + setting.key + "\t"));
    }
  }
}

}  // namespace
}  // namespace tavrix::cli
