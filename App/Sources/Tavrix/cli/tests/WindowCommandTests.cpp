#include <cerrno>

#include "cli/tests/CommandTester.h"

namespace tavrix::cli {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(WindowCommand, window_getsTheSourceTheDestinationAndTheLanguage) {
  const CommandTester tester;
  EXPECT_EQ(tester.run({"window"}).status, ExitStatus::done);
  EXPECT_THAT(tester.windowArguments, ElementsAre("--language", "ru"));
  EXPECT_EQ(tester.run({"window", "phone:X1", "--destination", "/photos", "--lang", "en"}).out, "");
  EXPECT_THAT(tester.windowArguments,
              ElementsAre("--language", "en", "--destination", "/photos", "phone:X1"));
  EXPECT_EQ(tester.run({"window", "--set", "uiMode=trips"}).status, ExitStatus::usage);
}

TEST(WindowCommand, windowThatCannotBeStarted_isReportedInOneSentence) {
  CommandTester tester;
  tester.windowFault = EACCES;
  const CommandResult fault = tester.run({"window", "--lang", "en"});
  EXPECT_EQ(fault.status, ExitStatus::stopped);
  EXPECT_THAT(fault.err, HasSubstr("Cannot start “tavrix-window”"));
  tester.isWindowInstalled = false;
  const CommandResult missing = tester.run({"window", "--lang", "en", "--json"});
  EXPECT_EQ(missing.status, ExitStatus::stopped);
  EXPECT_THAT(missing.err, HasSubstr("The window is not installed"));
  EXPECT_EQ(missing.out, "");
}

}  // namespace
}  // namespace tavrix::cli
