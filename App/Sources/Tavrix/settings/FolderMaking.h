#pragma once

#include <optional>
#include <string>
#include <vector>

#include "settings/Settings.h"
#include "transfer/DestinationMarker.h"

namespace tavrix {

/// Returns the settings that determine the names of folders and the paths of the files in them, as
/// far as they are in effect: those of another grouping mode are not. The keys are those of
/// settingKeys(), with values that withSetting() accepts; and "locale", the locale of the names.
DestinationMarker::FolderMaking folderMaking(const Settings& settings,
                                             const std::string& systemLocaleID);

/// The way back to names of an earlier making.
struct WayBack {
  std::vector<std::string> keys;         ///< settings that differ, as in a making
  std::vector<std::string> assignments;  ///< "KEY=VALUE" for withSetting()
  std::optional<std::string> locale;     ///< the locale to set, if that differs
  Settings settings{};                   ///< the given ones with the assignments
  /// The assignments and the locale give the earlier making again.
  bool isComplete = false;
};
/// Returns how `settings` must change so that folderMaking() returns `before`.
WayBack wayBack(Settings settings, const std::string& systemLocaleID,
                const DestinationMarker::FolderMaking& before);

}  // namespace tavrix
