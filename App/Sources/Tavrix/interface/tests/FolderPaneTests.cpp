#include <QQuickItem>
#include <QTest>

#include "interface/folder/ShotViewer.h"
#include "interface/list/FolderListModel.h"
#include "interface/tests/WindowHarness.h"

namespace tavrix::window {
namespace {

/// The window with a few folders, used with mouse and keyboard.
struct FolderPaneTest : testing::Test {
  FolderPaneTest() { QCoreApplication::processEvents(); }

  /// Returns the place in the window of a point in the card of a folder.
  QPoint placeIn(int row, QPointF point) const {
    const QRectF box = list.boxOf(row);
    const auto* const pane = window.findChild<QQuickItem*>(QStringLiteral("folderContent"));
    return pane->mapToScene(box.topLeft() + point).toPoint();
  }
  void click(int row, QPointF point, Qt::KeyboardModifiers keys = {}) {
    QTest::mouseClick(&window, Qt::LeftButton, keys, placeIn(row, point));
    harness.settle();
    QCoreApplication::processEvents();
  }
  void press(Qt::Key key, Qt::KeyboardModifiers keys = {}) {
    QTest::keyClick(&window, key, keys);
    harness.settle();
    QCoreApplication::processEvents();
  }
  bool isChecked(int row) {
    return isIncluded(harness.session.model().state(), *list.folderAt(row));
  }

  WindowHarness harness{12};
  QQuickWindow& window{harness.open({900, 600})};
  FolderListModel& list{*harness.engine.singletonInstance<FolderListModel*>(
      qmlTypeId("Tavrix", 1, 0, "FolderListModel"))};
};

TEST_F(FolderPaneTest, mouse_selectsApartFromChecking) {
  click(0, {100, 100});
  EXPECT_EQ(list.selectedCount(), 1);
  EXPECT_TRUE(isChecked(0));
  click(1, {100, 100}, Qt::ShiftModifier);
  EXPECT_EQ(list.selectedCount(), 2);
  click(1, {30, 30});
  EXPECT_FALSE(isChecked(1));
  EXPECT_EQ(list.selectedCount(), 2);
  click(0, {-10, 100});
  EXPECT_EQ(list.selectedCount(), 0);
}

TEST_F(FolderPaneTest, keyboard_movesChecksAndRenames) {
  click(0, {100, 100});
  press(Qt::Key_Right);
  EXPECT_EQ(list.currentRow(), 1);
  press(Qt::Key_Space);
  EXPECT_FALSE(isChecked(1));
  press(Qt::Key_F2);
  press(Qt::Key_A);
  press(Qt::Key_Return);
  EXPECT_EQ(list.nameOf(1), QStringLiteral("a"));
  press(Qt::Key_End);
  EXPECT_EQ(list.currentRow(), 3);
  press(Qt::Key_A, Qt::ControlModifier);
  EXPECT_TRUE(isChecked(1));
}

TEST_F(FolderPaneTest, openedFolder_showsItsShotsAndComesBack) {
  auto& shots =
      *harness.engine.singletonInstance<ShotListModel*>(qmlTypeId("Tavrix", 1, 0, "ShotListModel"));
  auto& viewer =
      *harness.engine.singletonInstance<ShotViewer*>(qmlTypeId("Tavrix", 1, 0, "ShotViewer"));
  click(1, {100, 100});
  press(Qt::Key_Return);
  ASSERT_TRUE(shots.isOpen());
  EXPECT_EQ(shots.title(), list.nameOf(1));
  EXPECT_EQ(shots.count(), 3);
  press(Qt::Key_Right);
  press(Qt::Key_Right);
  press(Qt::Key_Space);
  ASSERT_TRUE(viewer.isOpen());
  EXPECT_EQ(viewer.name(), QStringLiteral("IMG_0007.MOV"));
  press(Qt::Key_Right);
  press(Qt::Key_Right);
  EXPECT_FALSE(viewer.hasLater());
  press(Qt::Key_Escape);
  EXPECT_FALSE(viewer.isOpen());
  press(Qt::Key_Escape);
  EXPECT_FALSE(shots.isOpen());
  press(Qt::Key_Left);
  EXPECT_EQ(list.currentRow(), 0) << "the keys are the list's again";
}

}  // namespace
}  // namespace tavrix::window
