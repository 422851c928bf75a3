#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "foundation/StringMap.h"
#include "history/HistoryStore.h"
#include "media/AssetBundle.h"

namespace tavrix {

/// Returns the runs of a phone that came to their own end, with failures or without, newest first.
/// Cancelled and interrupted runs are not among them. Throws FileError.
std::vector<RecordSummary> finishedRuns(HistoryStore& store, const std::string& phoneHash);

/// Returns the ids of the files among `shots` that a finished run of the phone has copied or found
/// in place. A file counts as the recorded one if the dates of the shots are equal, and the sizes
/// if both are known. Reads records, newest first, until no older one can hold a remaining file.
/// Ignores records that cannot be read. Throws FileError.
StringSet recordedFiles(HistoryStore& store, const std::string& phoneHash,
                        const std::vector<AssetBundle>& shots);

}  // namespace tavrix
