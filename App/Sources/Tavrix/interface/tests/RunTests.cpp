#include "interface/run/Pace.h"
#include "interface/run/ProgressText.h"
#include "interface/run/SummaryRows.h"
#include "interface/words/TimeText.h"
#include "model/tests/support/ModelHarness.h"

namespace tavrix::window {
namespace {

using std::chrono::seconds;
using testing::ElementsAre;
using testing::HasSubstr;

/// A pace that is measured ten times a second.
struct Work {
  void run(seconds time, std::uint64_t unitsPerSecond) {
    for (int tick = 0; tick < time.count() * 10; ++tick) {
      now += std::chrono::milliseconds{100};
      pace.measure(now, done += unitsPerSecond / 10);
    }
  }

  Pace pace;
  Pace::Moment now{seconds{1000}};
  std::uint64_t done = 0;
};

TEST(Pace, timeLeft_isToldOnceItCanBeKnown) {
  Work work;
  work.pace.measure(work.now, 0);
  work.run(seconds{9}, 1000);
  EXPECT_EQ(work.pace.timeLeft(100'000), std::nullopt);
  work.run(seconds{2}, 1000);
  EXPECT_EQ(work.pace.timeLeft(100'000), seconds{89});
  EXPECT_EQ(work.pace.timeLeft(10'000'000), std::nullopt) << "not a hundredth is done";
  EXPECT_EQ(work.pace.timeLeft(5'000), seconds{0}) << "more is done than there was";
}

TEST(Pace, timeLeft_followsTheSpeedSlowlyAndIgnoresPausesAndSkippedUnits) {
  Work work;
  work.pace.measure(work.now, 0);
  work.run(seconds{60}, 1000);
  const auto before = work.pace.timeLeft(120'000);
  work.run(seconds{1}, 0);
  EXPECT_LT(*work.pace.timeLeft(120'000) - *before, seconds{4}) << "one slow second";
  work.pace.wait(work.now += std::chrono::hours{1}, work.done);
  work.pace.skip(work.now += seconds{1}, work.done += 30'000);
  EXPECT_LE(*work.pace.timeLeft(120'000), seconds{32});
  EXPECT_GE(*work.pace.timeLeft(120'000), seconds{29});
}

TEST(TimeText, isRoundedAsPeopleSayIt) {
  const auto left = [](seconds time) { return timeLeftText(Language::russian, time); };
  EXPECT_EQ(left(seconds{20}), "осталось меньше минуты");
  EXPECT_EQ(left(seconds{1020}), "осталось около 17\u00A0мин");
  EXPECT_EQ(left(std::chrono::minutes{43}), "осталось около 45\u00A0мин");
  EXPECT_EQ(left(std::chrono::minutes{124}), "осталось около 2\u00A0ч");
  EXPECT_EQ(timeTakenText(Language::english, std::chrono::minutes{65}), "1\u00A0h 5\u00A0min");
}

TEST(ProgressText, everyStage_saysHowFarItIs) {
  StagesOfRun run;
  run.progress.filesDone = 3;
  run.progress.filesTotal = 21;
  run.progress.verifiedCount = 2;
  EXPECT_THAT(stageTexts(Language::russian, run),
              ElementsAre("3 / 21 файлов", "сверено 2 / 21", "выключена", "выключена"));
  run.conversions = 4;
  run.isPacked = true;
  EXPECT_THAT(stageTexts(Language::english, run),
              ElementsAre("3 / 21 files", "verified 2 / 21", "queued", "queued"));
  run.progress.stage = TransferStage::packing;
  run.progress.packGroupsTotal = 2;
  EXPECT_EQ(stageTexts(Language::russian, run)[3], "0 / 2 групп");
}

/// Returns the sum of the numbers right below one.
std::uint64_t sumBelow(const std::vector<SummaryFacts::Number>& numbers, int depth) {
  std::uint64_t sum = 0;
  for (const auto& number : numbers) {
    if (number.depth == depth + 1) sum += number.count;
  }
  return sum;
}

TEST(Summary, numbersAddUp_andFailuresAreGatheredByReason) {
  ModelHarness harness;
  harness.phone.broken = {"IMG_0001.HEIC", "IMG_0004.HEIC"};
  harness.makeReady();
  harness.model->toggleGroup(harness.state().visibleGroups->back()->stableKey);
  harness.model->startTransfer();
  harness.settle();
  const SummaryFacts facts = summaryOf(Language::russian, *harness.model->run(), true);
  EXPECT_EQ(facts.headline.verdict, "Не перенеслось: 2");
  EXPECT_TRUE(facts.canRetry);
  EXPECT_EQ(facts.numbers.front().count, 12U);
  EXPECT_EQ(sumBelow(facts.numbers, 0), 12U);
  EXPECT_EQ(sumBelow(facts.numbers, 1), 9U) << "three files are in the folder left out";
  ASSERT_EQ(facts.failures.size(), 1U);
  const auto& files = facts.failures[0].files;
  ASSERT_EQ(files.size(), 2U);
  EXPECT_EQ(files[0].name, "IMG_0001.HEIC");
  EXPECT_THAT(files[0].folder, HasSubstr("2026-05-20"));

  harness.phone.broken.clear();
  harness.model->leaveSummary();
  harness.model->startTransfer();
  harness.settle();
  const SummaryFacts again = summaryOf(Language::russian, *harness.model->run(), true);
  EXPECT_EQ(again.tone, SummaryFacts::Tone::good);
  EXPECT_EQ(again.advice, "iPhone можно отключать.");
  EXPECT_TRUE(again.failures.empty());
  EXPECT_EQ(summaryOf(Language::russian, *harness.model->run(), false).advice, "");
}

}  // namespace
}  // namespace tavrix::window
