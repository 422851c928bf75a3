#pragma once

#include <string>
#include <vector>

#include "cli/sessions/CommandContext.h"

namespace tavrix::cli {

/// Reports on standard error what a reading left out, and counts the folders that could not be
/// read in the call's findings. `place` identifies the source in the log.
void tellReading(const CommandContext& context, const FolderCatalogue& catalogue,
                 const std::string& place);

/// Reports on standard error the folders of a card that hold pictures, too, but differ from the
/// chosen one by letter case alone: users take one for the other.
void tellOtherMediaFolders(const CommandContext& context, const std::string& folder);

/// If the call did not name a phone, reports on standard error which of several phones is used.
void tellOthers(const CommandContext& context, const PhoneOnCable& phone,
                const std::vector<PhoneOnCable>& others);

}  // namespace tavrix::cli
