#pragma once

#include <string>
#include <vector>

#include "foundation/StringMap.h"
#include "transfer/ChecksumFile.h"
#include "transfer/CopyVerification.h"

namespace tavrix {

/// How a list of checksums is made anew without losing what the earlier one proves. Pure functions.
namespace ChecksumMerge {

/// The digests of a list by path, "./" before a path aside; of several for one path the first.
StringMap<std::string> digests(const std::vector<ChecksumFile::Entry>& list);

/// The list after a check that was made with `digests(earlier)`, by path: of each recorded file the
/// digest that it had, by its record or else by the earlier list, whatever became of the file, so
/// that a file that is not as it was fails by the list, too. Only what neither knows has the digest
/// of now. Earlier lines for paths that no record names stay as they are.
std::vector<ChecksumFile::Entry> merged(const CopyVerification::Report& report,
                                        const std::vector<ChecksumFile::Entry>& earlier);

}  // namespace ChecksumMerge

}  // namespace tavrix
