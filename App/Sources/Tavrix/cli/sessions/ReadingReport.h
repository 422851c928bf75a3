#pragma once

#include <string>
#include <vector>

#include "cli/sessions/CommandContext.h"

namespace tavrix::cli {

/// Reports on standard error what a reading left out, and stores the number of incompletely read
/// folders in `context.source.unreadFolders`. `sourceName` identifies the source in the log.
void reportReading(const CommandContext& context, const FolderCatalogue& catalogue,
                   const std::string& sourceName);

/// Reports on standard error the further DCIM folders of a card that are not read ("dcim" beside
/// "DCIM"). `folder` is the one that is read. Throws FileError if the card cannot be listed.
void reportOtherMediaFolders(const CommandContext& context, const std::string& folder);

/// If the call did not name a phone, reports on standard error which of several phones is used.
void reportOtherPhones(const CommandContext& context, const PhoneOnCable& phone,
                       const std::vector<PhoneOnCable>& others);

}  // namespace tavrix::cli
