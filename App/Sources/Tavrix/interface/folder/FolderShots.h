#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "model/AppModel.h"

namespace tavrix::window {

/// The shots of one folder in capture order, divided into days, with the effect of a transfer on
/// each.
struct FolderShots {
  struct Section {
    std::optional<CivilDate> day;  ///< nullopt for shots without a date
    std::size_t count = 0;

    friend bool operator==(const Section&, const Section&) = default;
  };
  struct Effect {
    bool isInPlace = false;  ///< all files of the shot are at the destination
    /// Where the first of its files will be, relative to the destination; empty if none is copied.
    std::string path;

    friend bool operator==(const Effect&, const Effect&) = default;
  };

  Shared<DisplayGroup> folder;
  ShotClock clock;  ///< of the sections
  std::vector<Section> sections;
  std::vector<Effect> effects;  ///< one for each shot

  const std::vector<AssetBundle>& shots() const { return folder->group->bundles; }
  friend bool operator==(const FolderShots&, const FolderShots&) = default;
};

/// Returns the shots of the folder whose group has an id, or nullopt if it is not displayed.
std::optional<FolderShots> shotsOf(const AppModel& model, const std::string& groupID);

}  // namespace tavrix::window
