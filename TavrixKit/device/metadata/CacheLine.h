#pragma once

#include <optional>
#include <string_view>

#include "media/SnapshotItem.h"

namespace tavrix {

/// The record on one line of a metadata cache, without its line feed; nothing for what is no
/// record. A line as the cache writes it is taken apart at its known places, which is several times
/// faster than reading JSON; any other goes to the JSON reader, so that both give the same.
std::optional<SnapshotItem> recordOfLine(std::string_view line);

}  // namespace tavrix
