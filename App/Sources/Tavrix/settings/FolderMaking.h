#pragma once

#include <string>

#include "settings/Settings.h"
#include "transfer/DestinationMarker.h"

namespace tavrix {

/// Returns the settings that determine the names of folders and the paths of the files in them, as
/// far as they are in effect: those of another grouping mode are not. The keys are those of
/// settingKeys(), with values that withSetting() accepts; and "locale", the locale of the names.
DestinationMarker::FolderMaking folderMaking(const Settings& settings,
                                             const std::string& systemLocaleID);

}  // namespace tavrix
