// The window as a whole: the keyboard reaches all of it, and its colours can be read.

#include <QQmlComponent>
#include <QQuickItem>
#include <cmath>
#include <set>

#include "interface/tests/WindowHarness.h"

namespace tavrix::window {
namespace {

using Items = std::vector<const QQuickItem*>;

/// Returns the items that Tab reaches, one after another.
std::set<const QQuickItem*> tabOrder(const QQuickWindow& window) {
  std::set<const QQuickItem*> reached;
  QQuickItem* item = window.contentItem()->nextItemInFocusChain();
  while (item != nullptr && reached.insert(item).second) item = item->nextItemInFocusChain();
  return reached;
}

/// Adds the visible controls in an item.
void addControls(Items& controls, const QQuickItem& item) {
  if (!item.isVisible() || !item.isEnabled()) return;
  for (const char* const kind :
       {"QQuickAbstractButton", "QQuickTextField", "QQuickComboBox", "QQuickSlider"}) {
    if (item.inherits(kind)) controls.push_back(&item);
  }
  for (const QQuickItem* const child : item.childItems()) addControls(controls, *child);
}

/// Returns true if Tab reaches the item, a group that it is in, or the current item of its row.
bool isReached(const QQuickItem& item, const std::set<const QQuickItem*>& order) {
  const auto siblings = item.parentItem()->childItems();
  if (std::ranges::any_of(siblings, [&](const auto* sibling) { return order.contains(sibling); })) {
    return true;
  }
  for (const QQuickItem* above = &item; above != nullptr; above = above->parentItem()) {
    if (order.contains(above)) return true;
  }
  return false;
}

TEST(Window, tabReachesEveryControl) {
  WindowHarness harness{120};
  const QQuickWindow& window = harness.open({1400, 900});
  QCoreApplication::processEvents();
  Items controls;
  addControls(controls, *window.contentItem());
  EXPECT_GT(controls.size(), 30U);
  const auto order = tabOrder(window);
  EXPECT_GT(order.size(), 20U);
  for (const QQuickItem* const control : controls) {
    EXPECT_TRUE(isReached(*control, order))
        << control->metaObject()->className() << " “"
        << control->property("text").toString().toStdString() << "”";
  }
}

/// Returns the contrast of two opaque colours, 1 to 21, as WCAG 2 defines it.
double contrast(const QColor& a, const QColor& b) {
  const auto linear = [](double c) {
    return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
  };
  const auto luminance = [&](const QColor& c) {
    return 0.2126 * linear(c.redF()) + 0.7152 * linear(c.greenF()) + 0.0722 * linear(c.blueF());
  };
  const auto [low, high] = std::minmax({luminance(a), luminance(b)});
  return (high + 0.05) / (low + 0.05);
}

TEST(Window, coloursStandOutFromTheirGrounds) {
  WindowHarness harness{3};
  const QQuickWindow& window = harness.open({900, 600});
  QQmlComponent component{&harness.engine};
  component.setData("import QtQml\nimport Tavrix\nQtObject { property QtObject theme: Theme }", {});
  const std::unique_ptr<QObject> object{component.create()};
  const auto* const theme = object->property("theme").value<QObject*>();
  ASSERT_NE(theme, nullptr);
  Items controls;
  addControls(controls, *window.contentItem());
  struct Rule {
    double least;
    QStringList inks;
    QStringList grounds;
  };
  const auto list = [](const char* names) {
    return QString::fromLatin1(names).split(QLatin1Char{' '});
  };
  const Rule rules[] = {{4.5, list("text"), list("ground surface hover pressed selected tile")},
                        {4.5, list("secondText"), list("ground surface hover selected")},
                        {4.5, list("good warn bad"), list("ground surface")},
                        {4.5, list("accentText"), list("accent")},
                        {3.0, list("mark accent"), list("ground surface")},
                        {3.0, list("mark"), list("tile")}};
  for (const bool isDark : {false, true}) {
    harness.appearance.setDark(isDark);
    const auto colour = [&](const QString& name) {
      return theme->property(name.toLatin1().constData()).value<QColor>();
    };
    for (const auto& [least, inks, grounds] : rules) {
      for (const QString& ink : inks) {
        for (const QString& ground : grounds) {
          EXPECT_GE(contrast(colour(ink), colour(ground)), least)
              << ink.toStdString() << " on " << ground.toStdString() << ", dark: " << isDark;
        }
      }
    }
    for (const QQuickItem* const control : controls) {
      const QVariant hint = control->property("placeholderTextColor");
      if (control->property("placeholderText").toString().isEmpty()) continue;
      EXPECT_GE(contrast(hint.value<QColor>(), colour(QStringLiteral("surface"))), 4.5) << "hint";
    }
  }
}

}  // namespace
}  // namespace tavrix::window
