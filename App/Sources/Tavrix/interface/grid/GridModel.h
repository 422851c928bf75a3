#pragma once

#include <QtQml/qqmlregistration.h>
#include <QRectF>
#include <optional>

#include "interface/grid/SectionHeaders.h"

namespace tavrix::window {

/// A long list of cards or lines in sections, of which the view shows a part. The model knows the
/// place of every entry; the view reports the part that it shows, and follows `positioned`. A row
/// is the index of an entry.
class GridModel : public SlotModel {
  Q_OBJECT
  QML_ANONYMOUS
  Q_PROPERTY(int count READ count NOTIFY rebuilt)
  Q_PROPERTY(qreal contentHeight READ contentHeight NOTIFY rebuilt)
  Q_PROPERTY(QAbstractItemModel* headers READ headers CONSTANT)
  /// The title of the section at the top of the view, and how far the next one has pushed it up.
  Q_PROPERTY(QString topTitle READ topTitle NOTIFY scrolled)
  Q_PROPERTY(qreal topShift READ topShift NOTIFY scrolled)

 public:
  enum Step { Left, Right, Up, Down, First, Last, PageUp, PageDown };
  Q_ENUM(Step)

  int count() const { return static_cast<int>(layout_.size()); }
  qreal contentHeight() const { return layout_.height(); }
  QAbstractItemModel* headers() { return &headers_; }
  QString topTitle() const;
  qreal topShift() const;

  /// The view shows the part of the list from `top` on.
  Q_INVOKABLE void setViewport(qreal top, qreal width, qreal height);
  /// Returns an empty box if there is no such row.
  Q_INVOKABLE QRectF boxOf(int row) const;

 Q_SIGNALS:
  void rebuilt();
  void scrolled();
  /// The view must show the list from this offset on.
  void positioned(qreal top);

 protected:
  /// The number of entries in each section, and its title. Without titles there are no headers.
  struct Sections {
    std::vector<std::size_t> sizes;
    std::vector<QString> titles;
  };
  /// The place of an entry: its top is `offset` below the top of the view.
  struct Anchor {
    std::size_t entry = 0;
    double offset = 0;
  };

  explicit GridModel(const FolderLayout::Shape& shape) : shape_(shape) {}

  /// Returns the first entry in the view, or nullopt if the view is at the top of the list.
  std::optional<Anchor> anchor() const;
  /// Takes other entries, and shows the list from `kept` on, otherwise from its top.
  void setSections(Sections sections, std::optional<Anchor> kept);
  /// Takes the titles in another language.
  void setTitles(std::vector<QString> titles);
  /// Chooses cards or lines. The first entry in the view stays there.
  void setList(bool isList);
  bool isList() const { return shape_.isList; }
  /// Returns the row that a key leads to from a row, or from none.
  std::size_t rowAfter(Step step, int row) const;
  void moveIntoView(std::size_t row);

 private:
  void layOut(std::optional<Anchor> kept);
  void showViewport();

  Sections sections_;
  FolderLayout::Shape shape_;
  FolderLayout layout_;
  SectionHeaders headers_;
  double top_ = 0;
  double viewHeight_ = 0;
};

}  // namespace tavrix::window
