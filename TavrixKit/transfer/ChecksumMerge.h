#pragma once

#include <string>
#include <vector>

#include "foundation/StringMap.h"
#include "transfer/ChecksumFile.h"
#include "transfer/CopyVerification.h"

namespace tavrix {

/// Builds a new list of checksums without losing what the earlier one proves. Pure functions.
namespace ChecksumMerge {

/// Returns the digests of a list by path, without a leading "./". If a path occurs several times,
/// the first entry is used.
StringMap<std::string> digests(const std::vector<ChecksumFile::Entry>& list);

/// Returns the list, by path, after a check that was made with `digests(earlier)`. Each recorded
/// file keeps the digest that its record or else the earlier list names, whatever its state is now,
/// so that a changed file fails a check by the list, too. A file takes the digest of its present
/// bytes only if neither knows one. Earlier lines for paths that no record names stay as they are.
std::vector<ChecksumFile::Entry> merged(const CopyVerification::Report& report,
                                        const std::vector<ChecksumFile::Entry>& earlier);

}  // namespace ChecksumMerge

}  // namespace tavrix
