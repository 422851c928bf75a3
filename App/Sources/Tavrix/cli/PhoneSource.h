#pragma once

#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "cli/Commands.h"
#include "device/Phones.h"
#include "media/MediaSource.h"
#include "media/SnapshotItem.h"

namespace tavrix::cli {

/// The source "phone", the first one on the cable, or "phone:SERIAL". A transfer waits for its
/// phone, telling on standard error what to do; other commands end with that sentence.

/// Whether a source is a phone on the cable; a folder of that name is "./phone".
bool isPhone(std::string_view source);

/// The phones of the call's surroundings. Throws PhoneError (noService) where there are none.
PhoneBrowser& browserOf(const CommandContext& context);

/// The phone of the call, the same one at every call. Throws CommandFailure when there is none that
/// hands over its files, also when an interrupt ends the waiting.
const PhoneOnCable& chosenPhone(const CommandContext& context);

/// Its files with their metadata, as readFolder() does. Throws CommandFailure.
std::vector<SnapshotItem> readPhone(const CommandContext& context);
/// Its files' bytes. While the phone is away, a download waits for it.
std::unique_ptr<MediaSource> openPhone(const CommandContext& context);

}  // namespace tavrix::cli
