#include "cli/manual/ManualPage.h"

#include <gmock/gmock.h>

#include <fstream>

#include "cli/CommandTable.h"
#include "cli/manual/CommandFacts.h"
#include "cli/manual/SettingsPage.h"

namespace tavrix::cli {
namespace {

using testing::HasSubstr;

TEST(SettingsPage, committedPage_isTheOneThatTheProgramWrites) {
  std::ifstream page{std::string{TAVRIX_DOCS} + "/settings.md"};
  const std::string text{std::istreambuf_iterator<char>{page}, {}};
  EXPECT_EQ(text, settingsPage()) << "run scripts/make-settings-page";
}

TEST(ManualPage, everyCommandOptionAndSetting_isInBothLanguages) {
  for (const Language language : {Language::russian, Language::english}) {
    const std::string page = manualPage(language, "1.2.3");
    EXPECT_THAT(page, testing::StartsWith("tavrix(1) \"Tavrix 1.2.3\""));
    for (const CommandSpec& command : commandTable()) {
      EXPECT_THAT(page, HasSubstr("*tavrix " + command.words()));
      for (const CommandOption& option : command.options) {
        EXPECT_THAT(page, HasSubstr(std::string{option.name}.substr(1)));
      }
    }
    for (const CommonOption& option : commonOptions()) {
      EXPECT_THAT(page, HasSubstr("*\\" + std::string{option.name}));
    }
    for (const SettingDescription& setting : documentedSettings()) {
      EXPECT_THAT(page, HasSubstr("*" + setting.key + "*\n\t" + say(language, setting.meaning)));
    }
  }
}

TEST(CommandFacts, everyWordAndOption_hasAMeaning) {
  for (const OfferedWord& first : firstWords()) {
    EXPECT_NE(first.meaning, "") << first.word;
    for (const OfferedWord& second : secondWords(first.word)) {
      EXPECT_NE(second.meaning, "") << first.word << ' ' << second.word;
    }
  }
  for (const CommandSpec& command : commandTable()) {
    for (const OfferedWord& option : optionsOf(command)) {
      const bool isRequired = option.word == "--template" || option.word == "--context";
      EXPECT_TRUE(isRequired || !option.meaning.empty()) << command.words() << ' ' << option.word;
    }
  }
}

}  // namespace
}  // namespace tavrix::cli
