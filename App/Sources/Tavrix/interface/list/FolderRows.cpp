#include "interface/list/FolderRows.h"

#include <algorithm>

namespace tavrix::window {
namespace {

enum class Division { none, years, months };

Division divisionFor(std::optional<LayoutChoice> layout) {
  if (layout == LayoutChoice::years) return Division::none;
  return layout == LayoutChoice::months ? Division::years : Division::months;
}

/// Returns the section of a folder, without a count.
FolderRows::Section sectionOf(const DisplayGroup& folder, const TimeZone& zone, Division division) {
  FolderRows::Section section;
  const auto span = daysOf(*folder.group, zone);
  if (!span || division == Division::none) return section;
  const CivilDate day = span->first;
  section.year = static_cast<int>(day.year());
  if (division == Division::months) {
    section.month = static_cast<int>(static_cast<unsigned>(day.month()));
  }
  return section;
}

}  // namespace

std::optional<std::size_t> FolderRows::indexOf(std::uint32_t key) const {
  const auto found = std::ranges::find_if(
      folders, [&](const Shared<DisplayGroup>& folder) { return folder->key == key; });
  if (found == folders.end()) return std::nullopt;
  return static_cast<std::size_t>(found - folders.begin());
}

FolderRows folderRowsOf(const AppState& state) {
  FolderRows rows;
  const auto isDated = [](const Shared<DisplayGroup>& folder) {
    return folder->group->dateStart.has_value();
  };
  rows.folders.assign(state.visibleGroups->rbegin(), state.visibleGroups->rend());
  std::ranges::stable_partition(rows.folders, isDated);
  const Division division = divisionFor(layoutOf(*state.settings));
  rows.hasHeaders = division != Division::none;
  for (const Shared<DisplayGroup>& folder : rows.folders) {
    FolderRows::Section section = sectionOf(*folder, state.settings->gathering.timeZone, division);
    if (!rows.sections.empty()) section.count = rows.sections.back().count;
    if (rows.sections.empty() || section != rows.sections.back()) {
      section.count = 0;
      rows.sections.push_back(section);
    }
    ++rows.sections.back().count;
  }
  return rows;
}

bool haveSameFolders(const FolderRows& a, const FolderRows& b) {
  return a.sections == b.sections && a.hasHeaders == b.hasHeaders &&
         std::ranges::equal(
             a.folders, b.folders, {}, [](const auto& folder) { return folder->key; },
             [](const auto& folder) { return folder->key; });
}

}  // namespace tavrix::window
