#include "interface/outline/OutlineModel.h"

#include <gmock/gmock.h>

#include <thread>

#include "interface/session/ViewChoices.h"
#include "interface/session/WindowSession.h"
#include "interface/words/Words.h"
#include "model/tests/support/ModelHarness.h"

namespace tavrix::window {
namespace {

using testing::ElementsAre;

/// Runs the loop until the model shows what was chosen.
void settle(ManualMainLoop& loop, const WindowSession& session) {
  while (loop.runOne() || !session.model().isSettled()) std::this_thread::yield();
  loop.runDue();
}

std::vector<std::string> titlesOf(const OutlineModel& outline) {
  std::vector<std::string> titles;
  for (int row = 0; row < outline.rowCount(); ++row) {
    titles.push_back(
        outline.data(outline.index(row), OutlineModel::SpokenRole).toString().toStdString());
  }
  return titles;
}

TEST(OutlineModel, selection_survivesRegroupingAndFolding) {
  ManualMainLoop loop;
  WindowSession session{{.loop = loop}};
  const Words words{Language::russian};
  ViewChoices view{session};
  OutlineModel outline{session, words, view};
  FakePhone phone{40};  // three a day from 20 May on
  session.model().sourceReady(phone.source(), data_origin::Device{"iPhone"});
  settle(loop, session);
  EXPECT_THAT(titlesOf(outline),
              ElementsAre("Все снимки, 40 файлов", "Годы, раскрыто", "2026, 40 файлов, раскрыто",
                          "Июнь 2026, 4 файла", "Май 2026, 36 файлов", "Места, раскрыто",
                          "Без места, 40 файлов"));
  EXPECT_EQ(outline.current(), 0);

  outline.choose(4);
  settle(loop, session);
  EXPECT_EQ(outline.current(), 4);
  session.model().changeSettings(withLayout(*session.model().state().settings, LayoutChoice::days));
  settle(loop, session);
  EXPECT_EQ(outline.current(), 4);
  EXPECT_EQ(session.model().state().visibleGroups->size(), 12U);

  EXPECT_EQ(outline.collapse(4), 2);  // from a month to its year
  EXPECT_EQ(outline.collapse(2), 2);
  EXPECT_EQ(outline.current(), 2);  // which stands for the month that it hides
  EXPECT_EQ(outline.collapse(1), 1);
  EXPECT_FALSE(view.yearsExpanded());
  EXPECT_EQ(outline.current(), 1);
  outline.expand(1);
  outline.expand(2);
  EXPECT_EQ(outline.current(), 4);
  EXPECT_EQ(session.model().state().navSelection, NavSelection{(nav_selection::Month{2026, 5})});
}

TEST(OutlineRows, difference_isTheMiddle) {
  const auto rows = [](std::initializer_list<const char*> places) {
    NavOutline outline;
    for (const char* const name : places) outline.places.push_back({name, 1});
    return outlineRows(outline, {});
  };
  const auto isChange = [](int first, int removed, int inserted) {
    return testing::AllOf(testing::Field(&OutlineChange::first, first),
                          testing::Field(&OutlineChange::removed, removed),
                          testing::Field(&OutlineChange::inserted, inserted));
  };
  const auto before = rows({"Рим", "Рим", "Пиза"});
  EXPECT_THAT(differenceOf(before, before), isChange(5, 0, 0));
  EXPECT_THAT(differenceOf(before, rows({"Рим", "Пиза"})), isChange(3, 1, 0));
  EXPECT_THAT(differenceOf(before, rows({"Рим", "Рим", "Рим", "Пиза"})), isChange(4, 0, 1));
  EXPECT_THAT(differenceOf(before, rows({})), isChange(1, 4, 0));
}

}  // namespace
}  // namespace tavrix::window
