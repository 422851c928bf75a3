#include "interface/grid/FolderLayout.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace tavrix::window {
namespace {

using Box = FolderLayout::Box;
using Step = FolderLayout::Step;

/// Returns any list of one or more sections, as cards or as lines.
FolderLayout anyLayout() {
  const auto sizes = *rc::gen::nonEmpty(
      rc::gen::container<std::vector<std::size_t>>(rc::gen::inRange<std::size_t>(1, 30)));
  return {sizes,
          {.width = static_cast<double>(*rc::gen::inRange(40, 3000)),
           .header = *rc::gen::element(0.0, 44.0),
           .isList = *rc::gen::arbitrary<bool>()}};
}

double bottomOf(const Box& box) { return box.y + box.height; }

RC_GTEST_PROP(FolderLayout, boxes_followEachOtherWithoutOverlap, ()) {
  const FolderLayout layout = anyLayout();
  for (std::size_t card = 0; card < layout.size(); ++card) {
    const Box box = layout.boxOf(card);
    RC_ASSERT(box.y >= layout.shape().header);
    RC_ASSERT(bottomOf(box) <= layout.height());
    const double least = layout.shape().leastCardWidth;
    RC_ASSERT(layout.columns() == 1 || (layout.shape().isList == false && box.width >= least));
    RC_ASSERT(layout.columns() == 1 || box.x + box.width <= layout.shape().width);
    if (card == 0) continue;
    const Box before = layout.boxOf(card - 1);
    RC_ASSERT((before.y == box.y ? box.x >= before.x + before.width : box.y >= bottomOf(before)));
  }
}

RC_GTEST_PROP(FolderLayout, cardsBetween_areTheBoxesBetween, ()) {
  const FolderLayout layout = anyLayout();
  const double top = *rc::gen::inRange(-200, static_cast<int>(layout.height()) + 200);
  const double bottom = top + *rc::gen::inRange(1, 1500);
  const auto found = layout.cardsBetween(top, bottom);
  for (std::size_t card = 0; card < layout.size(); ++card) {
    const Box box = layout.boxOf(card);
    const bool isBetween = bottomOf(box) > top && box.y < bottom;
    RC_ASSERT(isBetween == (card >= found.first && card < found.last));
  }
}

RC_GTEST_PROP(FolderLayout, everyCardBetween_isInASectionBetween, ()) {
  const FolderLayout layout = anyLayout();
  const std::size_t card = *rc::gen::inRange<std::size_t>(0, layout.size());
  const Box box = layout.boxOf(card);
  const auto sections = layout.sectionsBetween(box.y, bottomOf(box));
  RC_ASSERT(sections.last == sections.first + 1);
  RC_ASSERT(layout.headerTop(sections.first) <= box.y - layout.shape().header);
}

RC_GTEST_PROP(FolderLayout, neighbour_isTheNearestInItsDirection, ()) {
  const FolderLayout layout = anyLayout();
  const std::size_t card = *rc::gen::inRange<std::size_t>(0, layout.size());
  const Box box = layout.boxOf(card);
  const double page = *rc::gen::inRange(1, 3000);
  const auto after = [&](Step step) { return layout.neighbour(card, step, page); };
  RC_ASSERT(after(Step::first) == 0U && after(Step::last) == layout.size() - 1);
  RC_ASSERT(after(Step::left) + (card == 0 ? 0 : 1) == card);
  RC_ASSERT(after(Step::right) == std::min(card + 1, layout.size() - 1));
  for (const bool isDown : {true, false}) {
    const std::size_t next = after(isDown ? Step::down : Step::up);
    const std::size_t far = after(isDown ? Step::pageDown : Step::pageUp);
    if (next == card) continue;
    const Box found = layout.boxOf(next);
    RC_ASSERT((isDown ? found.y > box.y : found.y < box.y));
    RC_ASSERT(found.x <= box.x);
    // There is no row in between.
    const double from = isDown ? bottomOf(box) : bottomOf(found);
    const auto between = layout.cardsBetween(from, isDown ? found.y : box.y);
    RC_ASSERT(between.first == between.last);
    RC_ASSERT((isDown ? far >= next : far <= next));
  }
}

}  // namespace
}  // namespace tavrix::window
