#pragma once

#include <string>

#include "foundation/Sentence.h"
#include "history/RunSummary.h"

namespace tavrix {

/// How a run went, in one line: "Все снимки на Mac".
std::string verdictText(Language language, TransferRecord::Status status,
                        const TransferRecord::Totals& totals);

/// What became of files or shots: "скопировано и сверено".
std::string stateText(Language language, TransferRecord::PartState state);
std::string outcomeText(Language language, TransferRecord::Outcome outcome);

/// "15 снимков".
std::string shotsText(Language language, std::uint64_t count);

}  // namespace tavrix
