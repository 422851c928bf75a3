#include "interface/folder/FolderShots.h"

#include <algorithm>

namespace tavrix::window {
namespace {

std::vector<FolderShots::Section> sectionsOf(const std::vector<AssetBundle>& shots,
                                             const ShotClock& clock) {
  std::vector<FolderShots::Section> sections;
  for (const AssetBundle& shot : shots) {
    const auto day = clock.dayOf(shot);
    // By the cameras' clocks a shot may be of the day before that of the previous shot.
    const bool isLater = !sections.empty() && (!day || sections.back().day < day);
    const bool isNew = sections.empty() || (isLater && sections.back().day != day);
    if (isNew) sections.push_back({day});
    ++sections.back().count;
  }
  return sections;
}

/// Returns the effects on the shots of a folder. The plan lists the files in the order of the
/// folders, without the known ones; those of this folder begin at `first`.
std::vector<FolderShots::Effect> effectsOf(const std::vector<AssetBundle>& shots,
                                           const TransferPlan* plan, std::size_t first) {
  std::vector<FolderShots::Effect> effects(shots.size());
  if (plan == nullptr) return effects;
  auto next =
      plan->files.begin() + static_cast<std::ptrdiff_t>(std::min(first, plan->files.size()));
  for (std::size_t i = 0; i < shots.size(); ++i) {
    effects[i].isInPlace = true;
    for (const MediaAsset& asset : shots[i].assets()) {
      if (next == plan->files.end() || next->asset.id() != asset.id()) continue;
      if (effects[i].isInPlace) effects[i].path = next->relativePath;
      effects[i].isInPlace = false;
      ++next;
    }
  }
  return effects;
}

}  // namespace

std::optional<FolderShots> shotsOf(const AppModel& model, const std::string& groupID) {
  const AppState& state = model.state();
  std::size_t first = 0;
  for (const auto& folder : *state.displayGroups) {
    if (folder->id == groupID) {
      const auto& shots = folder->group->bundles;
      const auto& plan = model.plan().plan;
      const bool isPlanned = state.destination && plan != nullptr;
      const ShotClock& clock = model.library()->clock;
      return FolderShots{.folder = folder,
                         .clock = clock,
                         .sections = sectionsOf(shots, clock),
                         .effects = effectsOf(shots, isPlanned ? plan.get() : nullptr, first)};
    }
    first += folder->newCount;
  }
  return std::nullopt;
}

}  // namespace tavrix::window
