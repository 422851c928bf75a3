#include "interface/list/FolderHeaders.h"

#include "interface/list/CardText.h"

namespace tavrix::window {

QVariant FolderHeaders::data(const QModelIndex& slot, int role) const {
  const int entry = entryAt(slot);
  const auto section = static_cast<std::size_t>(entry);
  const bool isShown = entry != none && section < sections_.size();
  if (role == IsShownRole) return isShown;
  if (role == TopRole) return isShown ? layout_.headerTop(section) : 0.0;
  return role == TitleRole && isShown ? titleOf(section) : QString{};
}

QHash<int, QByteArray> FolderHeaders::roleNames() const {
  return {{TitleRole, "sectionTitle"}, {TopRole, "headerTop"}, {IsShownRole, "isShown"}};
}

void FolderHeaders::take(std::vector<FolderRows::Section> sections, const FolderLayout& layout,
                         Language language) {
  sections_ = std::move(sections);
  layout_ = layout;
  language_ = language;
  refreshAll();
}

QString FolderHeaders::titleOf(std::size_t section) const {
  return QString::fromStdString(CardText::sectionTitle(language_, sections_[section]));
}

}  // namespace tavrix::window
