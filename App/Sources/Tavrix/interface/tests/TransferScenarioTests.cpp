// A transfer as a person makes it: by the buttons and texts of the window alone.

#include <QQuickItem>
#include <QTest>
#include <thread>

#include "interface/tests/WindowHarness.h"

namespace tavrix::window {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

struct TransferScenario : testing::Test {
  TransferScenario() {
    harness.session.model().setDestination(photos.path());
    settle();
  }

  void settle() {
    harness.settle();
    QCoreApplication::processEvents();
  }
  /// Returns the visible item of a kind whose text fits, the topmost one; nullptr if there is none.
  template <typename Fits>
  static QQuickItem* itemWith(QQuickItem& item, const char* kind, const Fits& fits) {
    if (!item.isVisible()) return nullptr;
    if (item.inherits(kind) && fits(item.property("text").toString())) return &item;
    // Later children are drawn above earlier ones.
    const auto children = item.childItems();
    for (auto child = children.rbegin(); child != children.rend(); ++child) {
      if (QQuickItem* const found = itemWith(**child, kind, fits)) return found;
    }
    return nullptr;
  }
  bool shows(const char* text) {
    const auto fits = [&](const QString& shown) { return shown.contains(QString::fromUtf8(text)); };
    return itemWith(*window.contentItem(), "QQuickText", fits) != nullptr;
  }
  bool comesToShow(const char* text) {
    using namespace std::chrono_literals;
    const auto end = std::chrono::steady_clock::now() + 60s;
    while (!shows(text)) {
      if (std::chrono::steady_clock::now() > end) return false;
      // The loop's own time passes as fast as the real one.
      std::this_thread::sleep_for(1ms);
      harness.loop.advance(1ms);
      QCoreApplication::processEvents();
    }
    return true;
  }
  void press(const char* text) {
    QCoreApplication::processEvents();
    window.grabWindow();  // everything gets its place
    const auto fits = [&](const QString& shown) { return shown == QString::fromUtf8(text); };
    auto* const button = itemWith(*window.contentItem(), "QQuickAbstractButton", fits);
    ASSERT_NE(button, nullptr) << text;
    const QPointF middle{button->width() / 2, button->height() / 2};
    QTest::mouseClick(&window, Qt::LeftButton, {}, button->mapToScene(middle).toPoint());
    QCoreApplication::processEvents();
    harness.loop.runDue();
  }
  /// Returns the names of the pictures at the destination, whose content is checked.
  std::vector<std::string> copies() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator{photos.path()}) {
      const std::string name = entry.path().filename().string();
      if (!entry.is_regular_file() || !name.starts_with("IMG_")) continue;
      const auto isIt = [&](const MediaAsset& asset) { return asset.name() == name; };
      const auto asset = std::ranges::find_if(harness.phone.assets(), isIt);
      const auto path = std::filesystem::relative(entry.path(), photos.path()).string();
      EXPECT_TRUE(asset != harness.phone.assets().end()) << name;
      EXPECT_EQ(photos.read(path), FakePhone::contentOf(*asset));
      names.push_back(name);
    }
    return names;
  }

  TemporaryFolder photos;
  WindowHarness harness{12, Language::english};
  QQuickWindow& window{harness.open({900, 600})};
};

TEST_F(TransferScenario, phoneLeaves_transferIsCancelledAndSaysWhatItCopied) {
  harness.phone.filesUntilUnplugged = 5;
  press("Transfer 12 files");
  ASSERT_TRUE(comesToShow("The transfer is waiting"));
  press("Cancel");
  ASSERT_TRUE(comesToShow("Stop the transfer?"));
  press("Keep Going");
  EXPECT_FALSE(shows("Stop the transfer?"));
  EXPECT_TRUE(shows("The transfer is waiting"));
  press("Cancel");
  press("Stop");
  ASSERT_TRUE(comesToShow("cancelled"));
  EXPECT_TRUE(shows("interrupted"));
  EXPECT_THAT(copies(), SizeIs(5));

  harness.phone.isPlugged = true;
  harness.phone.filesUntilUnplugged = -1;
  press("Done");
  settle();
  press("Transfer 7 files");
  ASSERT_TRUE(comesToShow("All snapshots are on this computer"));
  EXPECT_THAT(copies(), SizeIs(12));
}

TEST_F(TransferScenario, fullDisk_saysSoAndGoesOnOnceThereIsSpace) {
  harness.writesUntilFull = 4;
  press("Transfer 12 files");
  ASSERT_TRUE(comesToShow("The transfer is waiting"));
  EXPECT_TRUE(shows("no space"));
  EXPECT_THAT(copies(), SizeIs(4));
  harness.writesUntilFull = -1;
  harness.loop.advance(std::chrono::seconds{10});
  ASSERT_TRUE(comesToShow("All snapshots are on this computer"));
  EXPECT_THAT(copies(), SizeIs(12));
}

TEST_F(TransferScenario, fileThatCannotBeRead_isNamedAndTakenByAnotherTry) {
  harness.phone.broken = {"IMG_0004.HEIC"};
  press("Transfer 12 files");
  ASSERT_TRUE(comesToShow("Not transferred: 1"));
  EXPECT_TRUE(shows("IMG_0004.HEIC"));
  EXPECT_THAT(copies(), SizeIs(11));
  harness.phone.broken.clear();
  press("Try Again");
  ASSERT_TRUE(comesToShow("All snapshots are on this computer"));
  EXPECT_THAT(copies(), SizeIs(12));
}

TEST_F(TransferScenario, nothingIsTransferred_withoutAnythingToTransfer) {
  press("Uncheck All");
  settle();
  press("Transfer");
  EXPECT_TRUE(shows("OK")) << "a sentence about what is missing";
  EXPECT_THAT(copies(), ElementsAre());
  press("OK");
  press("Check All");
  settle();
  press("Transfer 12 files");
  ASSERT_TRUE(comesToShow("All snapshots are on this computer"));
  EXPECT_THAT(copies(), SizeIs(12));
}

}  // namespace
}  // namespace tavrix::window
