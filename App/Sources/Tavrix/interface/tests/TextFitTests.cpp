#include <QCoreApplication>
#include <QQuickItem>

#include "interface/list/FolderListModel.h"
#include "interface/tests/WindowHarness.h"

namespace tavrix::window {
namespace {

/// The texts of a window.
struct Texts {
  std::size_t count = 0;
  std::vector<std::string> cut;  ///< cut, or outside of the window

  /// Adds the texts in an item. Names of folders may be cut.
  void add(const QQuickItem& item, const QRectF& window) {
    if (!item.isVisible()) return;
    const QString text = item.property("text").toString();
    if (item.inherits("QQuickText") && !text.isEmpty()) {
      ++count;
      const QRectF place{item.mapToScene({0, 0}), item.size()};
      const bool isWider = item.property("paintedWidth").toReal() > item.width() + 0.5;
      const bool isOutside = place.left() < 0 || place.right() > window.right() + 0.5;
      const bool isCut = item.property("truncated").toBool() || isWider || isOutside;
      const bool mayBeCut = item.objectName() == QStringLiteral("folderName");
      if (isCut && !mayBeCut) cut.push_back(text.toStdString());
    }
    for (const QQuickItem* const child : item.childItems()) add(*child, window);
  }
};

class TextFit : public testing::TestWithParam<Language> {};

TEST_P(TextFit, smallWindow_cutsNoText) {
  WindowHarness harness{120, GetParam()};
  QQuickWindow& window = harness.open({900, 600});
  const int type = qmlTypeId("Tavrix", 1, 0, "FolderListModel");
  auto& list = *harness.engine.singletonInstance<FolderListModel*>(type);
  for (const bool isList : {false, true}) {
    list.setList(isList);
    QCoreApplication::processEvents();
    Texts texts;
    texts.add(*window.contentItem(), {QPointF{}, window.size()});
    EXPECT_GT(texts.count, 20U);
    EXPECT_THAT(texts.cut, testing::IsEmpty());
  }
}

TEST_P(TextFit, pagesOfATransfer_cutNoText) {
  WindowHarness harness{120, GetParam()};
  const QQuickWindow& window = harness.open({900, 600});
  AppModel& model = harness.session.model();
  const TemporaryFolder destination;
  const auto expectAllShown = [&](std::size_t least) {
    harness.settle();
    QCoreApplication::processEvents();
    Texts texts;
    texts.add(*window.contentItem(), {QPointF{}, window.size()});
    EXPECT_GT(texts.count, least);
    EXPECT_THAT(texts.cut, testing::IsEmpty());
  };
  harness.phone.broken = {"IMG_0001.HEIC"};
  harness.phone.filesUntilUnplugged = 50;
  model.setDestination(destination.path());
  model.startTransfer();
  ASSERT_TRUE(harness.loop.runUntil([&] { return model.state().pause.has_value(); }));
  expectAllShown(20);

  harness.phone.isPlugged = true;
  harness.phone.filesUntilUnplugged = -1;
  model.sourceReady(harness.phone.source(), data_origin::Snapshot{});
  ASSERT_TRUE(harness.loop.runUntil(
      [&] { return std::holds_alternative<app_phase::Done>(model.state().phase); }));
  // The summary is made in the background.
  const int type = qmlTypeId("Tavrix", 1, 0, "SummaryModel");
  const auto* const summary = harness.engine.singletonInstance<QObject*>(type);
  ASSERT_TRUE(
      harness.loop.runUntil([&] { return !summary->property("verdict").toString().isEmpty(); }));
  expectAllShown(10);
}

INSTANTIATE_TEST_SUITE_P(BothLanguages, TextFit,
                         testing::Values(Language::russian, Language::english));

}  // namespace
}  // namespace tavrix::window
