#pragma once

#include <optional>
#include <string_view>

#include "media/SnapshotItem.h"

namespace tavrix {

/// Parses one line of a metadata cache, without its line feed. Returns nullopt if the line is not a
/// record. A line in the exact form that the cache writes is parsed by its known field order, which
/// is several times faster than reading JSON. Any other line goes to the JSON reader. Both ways
/// give the same result.
std::optional<SnapshotItem> recordOfLine(std::string_view line);

}  // namespace tavrix
