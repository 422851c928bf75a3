#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "foundation/Sentence.h"
#include "foundation/files/FileError.h"
#include "media/MediaSource.h"
#include "transfer/TransferReport.h"

namespace tavrix {

/// Why a file of a plan failed: the sentence for the user and the code for programs.
namespace TransferFailures {

FileOutcome::Failed of(const SourceError& error, Language language);
FileOutcome::Failed of(const FileError& error, Language language);
FileOutcome::Failed leavesDestination(Language language);
FileOutcome::Failed hasUnsafeName(Language language);
/// For a source that fails in a way that it must not.
FileOutcome::Failed sourceFailed(Language language);
/// The source delivered fewer bytes than it listed, or, if `received` is absent, more; those were
/// not read to the end.
FileOutcome::Failed hasOtherSize(std::string_view name, std::uint64_t expected,
                                 std::optional<std::uint64_t> received, Language language);
/// Returns the part of that sentence that has the sizes.
std::string sizesText(std::uint64_t expected, std::optional<std::uint64_t> received,
                      Language language);

}  // namespace TransferFailures

}  // namespace tavrix
