#pragma once

#include <vector>

#include "interface/grid/SlotModel.h"

namespace tavrix::window {

/// The headers in the visible part of a list that is divided into sections.
class SectionHeaders : public SlotModel {
  Q_OBJECT

 public:
  enum Role { TitleRole = Qt::UserRole, TopRole, IsShownRole };

  QVariant data(const QModelIndex& slot, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

  /// Takes one title for each section of a layout; without titles no header is shown.
  void take(std::vector<QString> titles, const FolderLayout& layout);
  void showSections(FolderLayout::Range sections);
  /// Returns an empty text if there are no titles.
  QString titleOf(std::size_t section) const;

 private:
  std::vector<QString> titles_;
  FolderLayout layout_;
};

}  // namespace tavrix::window
