#pragma once

#include "interface/list/FolderRows.h"
#include "interface/list/SlotModel.h"

namespace tavrix::window {

/// The headers in the visible part of the list of folders.
class FolderHeaders : public SlotModel {
  Q_OBJECT

 public:
  enum Role { TitleRole = Qt::UserRole, TopRole, IsShownRole };

  QVariant data(const QModelIndex& slot, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

  /// Shows the headers of these sections of a list. All arguments are copied.
  void take(std::vector<FolderRows::Section> sections, const FolderLayout& layout,
            Language language);
  void showSections(FolderLayout::Range sections) { show(sections); }
  QString titleOf(std::size_t section) const;

 private:
  std::vector<FolderRows::Section> sections_;
  FolderLayout layout_;
  Language language_ = Language::russian;
};

}  // namespace tavrix::window
