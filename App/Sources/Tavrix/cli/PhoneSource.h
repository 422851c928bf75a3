#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "cli/Commands.h"
#include "device/Phones.h"
#include "media/MediaSource.h"
#include "media/SnapshotItem.h"

namespace tavrix::cli {

/// The source "phone", the first one on the cable, or "phone:SERIAL", for commands that end with a
/// sentence when it is not ready. For one that waits for its phone see cli/PhoneSession.h.

/// Whether a source is a phone on the cable; a folder of that name is "./phone".
bool isPhone(std::string_view source);
/// The number that the source of a call asks for; empty when the first phone will do.
std::string wantedNumber(const CommandContext& context);

/// The phones of the call's surroundings. Throws PhoneError (noService) where there are none.
PhoneBrowser& browserOf(const CommandContext& context);

/// The phone of the call, the same one at every call. Throws CommandFailure when there is none that
/// hands over its files.
const PhoneOnCable& chosenPhone(const CommandContext& context);

/// Its files with their metadata, as readFolder() does. Throws CommandFailure.
std::vector<SnapshotItem> readPhone(const CommandContext& context);
/// Its files' bytes, once its catalogue was read.
std::unique_ptr<MediaSource> openPhone(const CommandContext& context);

/// Tells on standard error which phone is taken when there are others that could have been meant.
void tellOthers(const CommandContext& context, const PhoneOnCable& phone,
                const std::vector<PhoneOnCable>& others);

}  // namespace tavrix::cli
