#include "interface/grid/SectionHeaders.h"

namespace tavrix::window {

QVariant SectionHeaders::data(const QModelIndex& slot, int role) const {
  const int entry = entryAt(slot);
  const auto section = static_cast<std::size_t>(entry);
  const bool isShown = entry != none && section < titles_.size();
  if (role == IsShownRole) return isShown;
  if (role == TopRole) return isShown ? layout_.headerTop(section) : 0.0;
  return role == TitleRole && isShown ? titles_[section] : QString{};
}

QHash<int, QByteArray> SectionHeaders::roleNames() const {
  return {{TitleRole, "sectionTitle"}, {TopRole, "headerTop"}, {IsShownRole, "isShown"}};
}

void SectionHeaders::take(std::vector<QString> titles, const FolderLayout& layout) {
  titles_ = std::move(titles);
  layout_ = layout;
  refreshAll();
}

void SectionHeaders::showSections(FolderLayout::Range sections) {
  show(titles_.empty() ? FolderLayout::Range{} : sections);
}

QString SectionHeaders::titleOf(std::size_t section) const {
  return section < titles_.size() ? titles_[section] : QString{};
}

}  // namespace tavrix::window
