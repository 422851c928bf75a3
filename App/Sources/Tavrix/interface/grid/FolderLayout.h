#pragma once

#include <cstddef>
#include <vector>

namespace tavrix::window {

/// The exact places of the cards, of folders or shots, in a list that is divided into sections,
/// each below a header of its own. All lengths are in pixels, offsets count from the top of the
/// list. Every question is answered in time logarithmic in the number of sections.
class FolderLayout {
 public:
  struct Shape {
    double width = 0;  ///< of the whole list
    double margin = 16;
    double gap = 12;
    double header = 44;  ///< height; 0 if sections have no headers
    double leastCardWidth = 264;
    double pictureShape = 3.0 / 2.0;  ///< width to height of the pictures of a card
    double cardPadding = 12;          ///< at both sides of the pictures
    double cardTexts = 130;  ///< height of the texts of a card with the margins around them
    bool isList = false;     ///< one line a folder instead of cards

    friend bool operator==(const Shape&, const Shape&) = default;
  };
  struct Box {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    friend bool operator==(const Box&, const Box&) = default;
  };
  /// Indexes from `first` up to and without `last`.
  struct Range {
    std::size_t first = 0;
    std::size_t last = 0;

    friend bool operator==(const Range&, const Range&) = default;
  };
  enum class Step { left, right, up, down, first, last, pageUp, pageDown };

  static constexpr double lineHeight = 40;

  FolderLayout() : FolderLayout({}, {}) {}
  /// Every section has at least one card.
  FolderLayout(const std::vector<std::size_t>& sectionSizes, const Shape& shape);

  const Shape& shape() const { return shape_; }
  std::size_t size() const { return firsts_.back(); }
  std::size_t columns() const { return columns_; }
  double cardHeight() const { return cardHeight_; }
  double height() const { return tops_.back(); }

  Box boxOf(std::size_t card) const;
  /// Returns the offset of the header of a section.
  double headerTop(std::size_t section) const { return tops_[section]; }
  /// Returns the cards that are at least partly between two offsets.
  Range cardsBetween(double top, double bottom) const;
  /// Returns the sections that are at least partly between two offsets.
  Range sectionsBetween(double top, double bottom) const;
  /// Returns the card to which a key leads from `card`. A page is `page` pixels high.
  std::size_t neighbour(std::size_t card, Step step, double page) const;

 private:
  /// A row of cards.
  struct Row {
    Range cards;
    double top = 0;
  };

  double pitch() const { return cardHeight_ + (shape_.isList ? 0 : shape_.gap); }
  std::size_t sectionOf(std::size_t card) const;
  Row rowOf(std::size_t card) const;
  Row rowIn(std::size_t section, std::size_t row) const;
  std::size_t rowsIn(std::size_t section) const;
  /// Returns the first row that ends below an offset; an empty one at the end if there is none.
  Row rowAt(double offset) const;

  Shape shape_;
  std::size_t columns_ = 1;
  double cardWidth_ = 0;
  double cardHeight_ = 0;
  std::vector<std::size_t> firsts_;  ///< first card of each section, and the number of cards
  std::vector<double> tops_;         ///< top of each section, and the height of the list
};

}  // namespace tavrix::window
