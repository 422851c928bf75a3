#pragma once

#include <string>

#include "foundation/Sentence.h"
#include "history/RecordSummary.h"

namespace tavrix {

/// Returns the result of a run in one line: "Все снимки на компьютере".
std::string verdictText(Language language, TransferRecord::Status status,
                        const TransferRecord::Totals& totals);

/// Return the state of files or the outcome of shots as text: "скопировано и сверено".
std::string stateText(Language language, TransferRecord::PartState state);
std::string outcomeText(Language language, TransferRecord::Outcome outcome);

/// Returns the number of shots as text: "15 снимков".
std::string shotsText(Language language, std::uint64_t count);

}  // namespace tavrix
