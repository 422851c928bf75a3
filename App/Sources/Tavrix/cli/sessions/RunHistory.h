#pragma once

#include <optional>
#include <string>

#include "cli/sessions/CommandContext.h"
#include "history/TransferRecord.h"

namespace tavrix::cli {

/// Writes the record of a run; it replaces an earlier record of the same run. Returns nullopt, or
/// the sentence that says why the record was not written.
std::optional<std::string> writeRecord(const CommandContext& context, const TransferRecord& record);

}  // namespace tavrix::cli
