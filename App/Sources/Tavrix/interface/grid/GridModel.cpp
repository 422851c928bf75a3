#include "interface/grid/GridModel.h"

#include <algorithm>

namespace tavrix::window {

QString GridModel::topTitle() const {
  const auto sections = layout_.sectionsBetween(top_, top_ + 1);
  return sections.first < sections.last ? headers_.titleOf(sections.first) : QString{};
}

qreal GridModel::topShift() const {
  const double header = layout_.shape().header;
  const auto sections = layout_.sectionsBetween(top_, top_ + header);
  if (sections.last - sections.first < 2) return 0;
  return std::min(0.0, layout_.headerTop(sections.first + 1) - top_ - header);
}

QRectF GridModel::boxOf(int row) const {
  if (row < 0 || row >= count()) return {};
  const FolderLayout::Box box = layout_.boxOf(static_cast<std::size_t>(row));
  return {box.x, box.y, box.width, box.height};
}

std::optional<GridModel::Anchor> GridModel::anchor() const {
  const auto shown = layout_.cardsBetween(top_, top_ + std::max(1.0, viewHeight_));
  if (top_ <= 0 || shown.first >= shown.last) return std::nullopt;
  return Anchor{shown.first, layout_.boxOf(shown.first).y - top_};
}

void GridModel::setSections(Sections sections, std::optional<Anchor> kept) {
  sections_ = std::move(sections);
  layOut(kept);
  Q_EMIT positioned(top_);
}

void GridModel::setTitles(std::vector<QString> titles) {
  sections_.titles = std::move(titles);
  headers_.take(sections_.titles, layout_);
  refreshAll();
  Q_EMIT scrolled();
}

void GridModel::setList(bool isList) {
  auto kept = anchor();
  if (kept) kept->offset = 0;
  shape_.isList = isList;
  layOut(kept);
  Q_EMIT positioned(top_);
}

void GridModel::layOut(std::optional<Anchor> kept) {
  FolderLayout::Shape shape = shape_;
  if (sections_.titles.empty()) shape.header = shape.margin;
  layout_ = FolderLayout{sections_.sizes, shape};
  const double wanted = kept ? layout_.boxOf(kept->entry).y - kept->offset : 0;
  top_ = std::clamp(wanted, 0.0, std::max(0.0, layout_.height() - viewHeight_));
  headers_.take(sections_.titles, layout_);
  showViewport();
  refreshAll();
  Q_EMIT rebuilt();
}

void GridModel::showViewport() {
  // A little more than what is visible, so that a slow scroll changes slots rarely.
  constexpr double spare = 40;
  const double bottom = top_ + viewHeight_;
  show(layout_.cardsBetween(top_ - spare, bottom + spare));
  headers_.showSections(layout_.sectionsBetween(top_, bottom));
  Q_EMIT scrolled();
}

void GridModel::setViewport(qreal top, qreal width, qreal height) {
  const bool isOtherWidth = width != shape_.width;
  top_ = top;
  viewHeight_ = height;
  if (!isOtherWidth) return showViewport();
  auto kept = anchor();
  if (kept) kept->offset = 0;
  shape_.width = width;
  layOut(kept);
  if (top_ != top) Q_EMIT positioned(top_);
}

std::size_t GridModel::rowAfter(Step step, int row) const {
  static_assert(static_cast<int>(FolderLayout::Step::pageDown) == PageDown);
  if (row == none) return layout_.cardsBetween(top_, top_ + viewHeight_).first;
  return layout_.neighbour(static_cast<std::size_t>(row), static_cast<FolderLayout::Step>(step),
                           viewHeight_);
}

void GridModel::moveIntoView(std::size_t row) {
  const FolderLayout::Box box = layout_.boxOf(row);
  const double above = box.y - layout_.shape().header;
  const double below = box.y + box.height + layout_.shape().margin - viewHeight_;
  if (top_ > above) {
    Q_EMIT positioned(std::max(0.0, above));
  } else if (top_ < below) {
    Q_EMIT positioned(below);
  }
}

}  // namespace tavrix::window
