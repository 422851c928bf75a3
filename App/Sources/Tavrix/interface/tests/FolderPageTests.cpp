#include "interface/folder/ShotText.h"
#include "interface/list/BoundaryText.h"
#include "interface/tests/WindowHarness.h"
#include "library/Library.h"
#include "media/BundleBuilder.h"
#include "media/SnapshotItem.h"

namespace tavrix::window {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;
using testing::IsEmpty;

/// The shots of the folder of an index, the oldest first.
FolderShots shotsAt(WindowHarness& harness, std::size_t index) {
  AppModel& model = harness.session.model();
  return shotsOf(model, (*model.state().displayGroups)[index]->id).value();
}

TEST(FolderShots, effects_areThoseOfTheTransfer) {
  WindowHarness harness{9};
  AppModel& model = harness.session.model();
  EXPECT_THAT(shotsAt(harness, 1).effects, Each(FolderShots::Effect{})) << "no destination";
  const TemporaryFolder photos;
  model.setDestination(photos.path());
  // Only the second folder is transferred.
  model.includeNone();
  model.toggleGroup((*model.state().displayGroups)[1]->stableKey);
  harness.settle();
  const FolderShots before = shotsAt(harness, 1);
  EXPECT_EQ(before.effects[0].path, "2026-05-21/IMG_0003.MOV");
  model.startTransfer();
  const auto isDone = [&] { return std::holds_alternative<app_phase::Done>(model.state().phase); };
  ASSERT_TRUE(harness.loop.runUntil(isDone));
  model.leaveSummary();
  harness.settle();
  EXPECT_THAT(shotsAt(harness, 1).effects, Each(Field(&FolderShots::Effect::isInPlace, true)));
  EXPECT_THAT(shotsAt(harness, 2).effects, Each(Field(&FolderShots::Effect::isInPlace, false)));
  EXPECT_EQ(shotsAt(harness, 2).effects[0].path, "2026-05-22/IMG_0006.HEIC");
}

TEST(FolderShots, folderOfManyDays_isDividedIntoDays) {
  WindowHarness harness{9};
  harness.session.model().changeSettings(
      withLayout(*harness.session.model().state().settings, LayoutChoice::months));
  harness.settle();
  const FolderShots shots = shotsAt(harness, 0);
  ASSERT_EQ(shots.sections.size(), 3U);
  EXPECT_EQ(shots.sections[1].count, 3U);
  EXPECT_EQ(ShotText::dayTitle(Language::russian, shots.sections[0]), "20 мая 2026, среда");
  EXPECT_EQ(ShotText::dayTitle(Language::english, shots.sections[0]), "Wednesday, 20 May 2026");
}

TEST(ShotText, date_isTitledByItsSource) {
  const auto titleOf = [](const char* name, std::optional<std::string> exifDate) {
    SnapshotItem item;
    item.name = name;
    item.kind = "photo";
    item.itemDate = 1'779'267'600;
    item.exifDate = std::move(exifDate);
    const MediaAsset asset = item.mediaAsset("id", TimeZone::utc(), DatesFromNames::used);
    MediaGroup group;
    group.bundles = {*BundleBuilder::bundle("id", {asset})};
    DisplayGroup folder;
    folder.group = std::move(group);
    const FolderShots shots{std::move(folder), {}, {}, {{}}};
    return ShotText::facts(Language::english, shots, 0, {}).at(0);
  };
  using Fact = ShotText::Fact;
  EXPECT_EQ(titleOf("IMG_1.JPG", "2026:05:20 12:00:00"), (Fact{"Taken", "20 May 2026, 12:00"}));
  EXPECT_EQ(titleOf("photo_2020-01-01_10-11-12.jpg", {}),
            (Fact{"Date in the file name", "1 January 2020, 10:11"}));
  EXPECT_EQ(titleOf("IMG_1.JPG", {}), (Fact{"Date of the file", "20 May 2026, 09:00"}));
}

TEST(ShotText, filmLength_isInWholeSecondsAndSaidWithUnits) {
  using namespace std::chrono_literals;
  EXPECT_EQ(ShotText::filmLength(120ms), "0:01");
  EXPECT_EQ(ShotText::filmLength(7'600ms), "0:08");
  EXPECT_EQ(ShotText::filmLength({}), "");
  WindowHarness harness{9};
  const FolderShots shots = shotsAt(harness, 0);
  EXPECT_THAT(ShotText::description(Language::english, shots, 0, 62s),
              HasSubstr("1\u00A0min 2\u00A0s"));
  EXPECT_THAT(ShotText::facts(Language::russian, shots, 0, 62s),
              testing::Contains(ShotText::Fact{"Длительность", "1:02"}));
}

struct BoundaryTest : testing::Test {
  std::vector<std::string> textOf(LayoutChoice layout, std::size_t index) {
    AppModel& model = harness.session.model();
    model.changeSettings(withLayout(*model.state().settings, layout));
    harness.settle();
    return boundaryText(Language::english, *model.library(),
                        *(*model.state().displayGroups)[index]->group, TimeZone::utc());
  }
  WindowHarness harness{9};
};

TEST_F(BoundaryTest, everyLayout_explainsItsFolders) {
  EXPECT_THAT(textOf(LayoutChoice::events, 0),
              ElementsAre(HasSubstr("the earliest"), HasSubstr("The next folder: pause of"),
                          HasSubstr("How to divide")));
  EXPECT_THAT(
      textOf(LayoutChoice::events, 2),
      ElementsAre(HasSubstr("pause of"), "There are no later shots.", HasSubstr("How to divide")));
  EXPECT_THAT(textOf(LayoutChoice::days, 0),
              ElementsAre(HasSubstr("the time zone UTC"), "This is the day 2026-05-20."));
  EXPECT_THAT(textOf(LayoutChoice::trips, 0),
              ElementsAre(HasSubstr("in no trip"), HasSubstr("— 9 shots"), HasSubstr("How to")));
}

TEST_F(BoundaryTest, mergedFolder_isTheUsersOwn) {
  AppModel& model = harness.session.model();
  const auto& folders = *model.state().displayGroups;
  model.mergeGroups({folders[0]->id, folders[1]->id});
  EXPECT_THAT(textOf(LayoutChoice::events, 0),
              ElementsAre(HasSubstr("2"), HasSubstr("You merged")));
}

}  // namespace
}  // namespace tavrix::window
