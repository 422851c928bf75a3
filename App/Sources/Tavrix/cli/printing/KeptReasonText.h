#pragma once

#include <string>

#include "cli/printing/UnreadableReason.h"
#include "cli/sentences/RepairSentences.h"
#include "foundation/Text.h"
#include "transfer/CopyRepair.h"

namespace tavrix::cli {

/// Returns what is at the path of a file in its place; empty for an ordinary file.
inline std::string inPlaceText(Language language, FileStatus::Type found) {
  switch (found) {
    case FileStatus::Type::file:
      return {};
    case FileStatus::Type::link:
      return say(language, sentences::linkInPlace);
    case FileStatus::Type::folder:
      return say(language, sentences::folderInPlace);
    case FileStatus::Type::other:
      return say(language, sentences::otherInPlace);
  }
  return {};
}

/// Returns why a repair leaves a file as it is, for a line that already names the file.
inline std::string keptReasonText(Language language, const CopyRepair::KeptFile& file) {
  using enum CopyRepair::KeptReason;
  switch (file.reason) {
    case otherPhone:
      return say(language, sentences::keptOfOtherPhone, printable(file.phone));
    case archive:
      return say(language, sentences::keptArchive);
    case notInSource:
      return say(language, tavrix::sentences::notInSource);
    case converted:
      return say(language, sentences::keptConverted);
    case reducedCopy:
      return say(language, sentences::keptReducedCopy);
    case otherContent:
      return file.expectedBytes && file.sourceBytes
                 ? say(language, sentences::keptOtherSize, *file.expectedBytes, *file.sourceBytes)
                 : say(language, sentences::keptOtherContent);
    case notFile:
      return inPlaceText(language, file.found);
    case unreadable:
      return unreadableReason(language, file.errorCode);
    case neverConfirmed:
      return say(language, sentences::keptNeverConfirmed);
    case notReached:
      return say(language, tavrix::sentences::stateNotReached);
  }
  return {};
}

}  // namespace tavrix::cli
