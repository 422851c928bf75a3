#include "interface/list/FolderActions.h"
#include "interface/list/FolderListModel.h"
#include "interface/tests/WindowHarness.h"

namespace tavrix::window {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A list of folders, one a day, with a record of what it reports to its view.
struct FolderListTest : testing::Test {
  FolderListTest() {
    QObject::connect(
        &list, &FolderListModel::dataChanged,
        [this](const QModelIndex& first, const QModelIndex& last) {
          for (int slot = first.row(); slot <= last.row(); ++slot) {
            changed.insert(
                list.data(list.index(slot), FolderListModel::NameRole).toString().toStdString());
          }
        });
    QObject::connect(&list, &FolderListModel::positioned,
                     [this](qreal top) { positions.push_back(top); });
    list.setViewport(0, 900, 600);
  }
  /// Carries out a change of the model, and forgets what was reported before.
  template <typename Change>
  void after(Change change) {
    changed.clear();
    positions.clear();
    change(harness.session.model());
    harness.settle();
  }
  const DisplayGroup& folder(int row) { return *list.folderAt(row); }
  std::vector<std::string> chosen() {
    std::vector<std::string> names;
    for (const auto& each : list.chosenFolders()) names.push_back(each->folderName);
    return names;
  }

  WindowHarness harness{120};
  FolderListModel list{harness.session, harness.words};
  std::set<std::string> changed{};
  std::vector<qreal> positions{};
};

TEST_F(FolderListTest, newestFolder_isFirst) {
  ASSERT_EQ(list.count(), 40);
  EXPECT_GT(folder(0).group->dateStart, folder(39).group->dateStart);
  EXPECT_EQ(list.topTitle(), QStringLiteral("Июнь 2026"));
}

TEST_F(FolderListTest, sameFolders_reportOnlyTheCardsThatDiffer) {
  const std::string key = folder(1).stableKey;
  after([&](AppModel& model) { model.toggleGroup(key); });
  EXPECT_THAT(changed, ElementsAre(folder(1).folderName));
  const std::string id = folder(2).id;
  after([&](AppModel& model) { model.renameGroup(id, "Дача"); });
  EXPECT_THAT(changed, ElementsAre("Дача"));
  EXPECT_THAT(positions, IsEmpty());
}

TEST_F(FolderListTest, otherFolders_keepTheOneAtTheTopInItsPlace) {
  list.setViewport(list.boxOf(9).y() + 7, 900, 600);
  const std::uint32_t key = folder(9).key;
  const CivilDate before = TimeZone::utc().dateAt(*folder(4).group->dateStart);
  after([&](AppModel& model) {
    Settings settings = *model.state().settings;
    settings.content.periodTo = before;
    model.changeSettings(std::move(settings));
  });
  ASSERT_EQ(list.count(), 36);
  ASSERT_EQ(folder(5).key, key);
  ASSERT_FALSE(positions.empty());
  EXPECT_EQ(positions.back(), list.boxOf(5).y() + 7);
}

TEST_F(FolderListTest, scrolling_showsEveryFolderOnceWithFewSlots) {
  std::set<int> seen;
  for (qreal top = 0; top < list.contentHeight(); top += 500) {
    list.setViewport(top, 900, 600);
    std::set<int> rows;
    for (int slot = 0; slot < list.rowCount(); ++slot) {
      const int row = list.data(list.index(slot), FolderListModel::RowRole).toInt();
      EXPECT_TRUE(row < 0 || rows.insert(row).second);
    }
    seen.insert(rows.begin(), rows.end());
  }
  EXPECT_EQ(seen.size(), 40U);
  EXPECT_LE(list.rowCount(), 12);
}

TEST_F(FolderListTest, clicksAndKeys_select) {
  const auto name = [&](int row) { return folder(row).folderName; };
  list.click(1, Qt::NoModifier);
  list.click(3, Qt::ShiftModifier);
  EXPECT_THAT(chosen(), ElementsAre(name(1), name(2), name(3)));
  list.click(2, Qt::ControlModifier);
  EXPECT_THAT(chosen(), ElementsAre(name(1), name(3)));
  list.move(FolderListModel::Right, false);
  EXPECT_THAT(chosen(), ElementsAre(name(3)));
  after([&](AppModel& model) { model.search("no such folder"); });
  EXPECT_EQ(list.count(), 0);
  EXPECT_THAT(chosen(), IsEmpty());
}

TEST_F(FolderListTest, mergedFolders_areSelectedAndCanBeTakenApart) {
  FolderActions actions{harness.session, list, harness.words};
  list.click(0, Qt::NoModifier);
  list.click(1, Qt::ShiftModifier);
  ASSERT_TRUE(actions.canMerge());
  after([&](AppModel&) { actions.merge(); });
  EXPECT_EQ(list.count(), 39);
  EXPECT_TRUE(actions.canUndoMerge());
  EXPECT_TRUE(actions.canTakeApart());
  after([&](AppModel&) { actions.undoMerge(); });
  EXPECT_EQ(list.count(), 40);
  EXPECT_FALSE(actions.canUndoMerge());
}

}  // namespace
}  // namespace tavrix::window
