#include "interface/grid/FolderLayout.h"

#include <algorithm>
#include <cmath>

namespace tavrix::window {

FolderLayout::FolderLayout(const std::vector<std::size_t>& sectionSizes, const Shape& shape)
    : shape_(shape) {
  const double inner = std::max(0.0, shape.width - 2 * shape.margin);
  if (!shape.isList) {
    const double fitting = (inner + shape.gap) / (shape.leastCardWidth + shape.gap);
    columns_ = static_cast<std::size_t>(std::max(1.0, std::floor(fitting)));
  }
  const auto gaps = static_cast<double>(columns_ - 1) * shape.gap;
  cardWidth_ = std::floor((inner - gaps) / static_cast<double>(columns_));
  const double pictures = std::max(0.0, cardWidth_ - 2 * shape.cardPadding) / shape.pictureShape;
  cardHeight_ = shape.isList ? lineHeight : std::floor(pictures) + shape.cardTexts;
  double top = 0;
  std::size_t first = 0;
  for (const std::size_t size : sectionSizes) {
    tops_.push_back(top);
    firsts_.push_back(first);
    first += size;
    const std::size_t rows = (size + columns_ - 1) / columns_;
    top += shape.header + static_cast<double>(rows) * pitch();
  }
  tops_.push_back(sectionSizes.empty() ? 0 : top + shape.margin);
  firsts_.push_back(first);
}

std::size_t FolderLayout::sectionOf(std::size_t card) const {
  const auto after = std::upper_bound(firsts_.begin(), firsts_.end() - 1, card);
  return static_cast<std::size_t>(after - firsts_.begin()) - 1;
}

std::size_t FolderLayout::rowsIn(std::size_t section) const {
  return (firsts_[section + 1] - firsts_[section] + columns_ - 1) / columns_;
}

FolderLayout::Row FolderLayout::rowIn(std::size_t section, std::size_t row) const {
  const std::size_t first = firsts_[section] + row * columns_;
  return {{first, std::min(first + columns_, firsts_[section + 1])},
          tops_[section] + shape_.header + static_cast<double>(row) * pitch()};
}

FolderLayout::Row FolderLayout::rowOf(std::size_t card) const {
  const std::size_t section = sectionOf(card);
  return rowIn(section, (card - firsts_[section]) / columns_);
}

FolderLayout::Box FolderLayout::boxOf(std::size_t card) const {
  const Row row = rowOf(card);
  const auto column = static_cast<double>(card - row.cards.first);
  return {shape_.margin + column * (cardWidth_ + shape_.gap), row.top, cardWidth_, cardHeight_};
}

FolderLayout::Row FolderLayout::rowAt(double offset) const {
  const Row end{{size(), size()}, height()};
  if (size() == 0) return end;
  const auto after = std::upper_bound(tops_.begin(), tops_.end() - 1, std::max(0.0, offset));
  const auto section = static_cast<std::size_t>(after - tops_.begin()) - 1;
  const double below = std::max(0.0, offset - tops_[section] - shape_.header);
  auto row = static_cast<std::size_t>(below / pitch());
  if (below - static_cast<double>(row) * pitch() >= cardHeight_) ++row;
  if (row < rowsIn(section)) return rowIn(section, row);
  return section + 2 < tops_.size() ? rowIn(section + 1, 0) : end;
}

FolderLayout::Range FolderLayout::cardsBetween(double top, double bottom) const {
  const Row last = rowAt(bottom);
  const Range cards{rowAt(top).cards.first, last.top < bottom ? last.cards.last : last.cards.first};
  return cards.first < cards.last ? cards : Range{};
}

FolderLayout::Range FolderLayout::sectionsBetween(double top, double bottom) const {
  if (size() == 0 || bottom <= 0 || top >= bottom) return {};
  const auto begin = tops_.begin();
  const auto end = tops_.end() - 1;
  const auto first = std::upper_bound(begin, end, std::max(0.0, top)) - 1;
  const auto last = std::lower_bound(begin, end, bottom);
  return {static_cast<std::size_t>(first - begin), static_cast<std::size_t>(last - begin)};
}

std::size_t FolderLayout::neighbour(std::size_t card, Step step, double page) const {
  const std::size_t last = size() - 1;
  const Row row = rowOf(card);
  const std::size_t column = card - row.cards.first;
  // A shorter row has no card in the same column; its last one is taken.
  const auto inColumn = [&](const Row& other) {
    return std::min(other.cards.first + column, other.cards.last - 1);
  };
  switch (step) {
    case Step::left:
      return card == 0 ? 0 : card - 1;
    case Step::right:
      return std::min(card + 1, last);
    case Step::up:
      return row.cards.first == 0 ? card : inColumn(rowOf(row.cards.first - 1));
    case Step::down:
      return row.cards.last > last ? card : inColumn(rowOf(row.cards.last));
    case Step::first:
      return 0;
    case Step::last:
      return last;
    case Step::pageUp: {
      const std::size_t above = inColumn(rowAt(row.top - page));
      return above < row.cards.first ? above : neighbour(card, Step::up, page);
    }
    case Step::pageDown: {
      const Row below = rowAt(row.top + std::max(0.0, page - cardHeight_));
      if (below.cards.first >= size()) return inColumn(rowOf(last));
      const std::size_t found = inColumn(below);
      return found >= row.cards.last ? found : neighbour(card, Step::down, page);
    }
  }
  return card;
}

}  // namespace tavrix::window
