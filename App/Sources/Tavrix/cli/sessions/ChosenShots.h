#pragma once

#include <string>
#include <vector>

#include "cli/sessions/CommandContext.h"
#include "foundation/StringMap.h"
#include "library/Choice.h"
#include "runs/Destination.h"

namespace tavrix::cli {

/// Returns the choice of the call. Throws CommandFailure if it cannot be understood.
Choice choiceOf(const CommandContext& context);

/// Returns the ids of the files of these shots that finished runs of the phone have recorded.
/// Throws FileError, and CommandFailure if there is no state folder. May be called on any thread.
StringSet recordedFiles(const CommandContext& context, const PhoneIdentity& phone,
                        const std::vector<AssetBundle>& shots);
/// Reports on standard error what the choice of the call does not find: patterns that no file
/// matches, and a first transfer of the phone. `bundles` are all shots.
void tellChoice(const CommandContext& context, const PhoneIdentity& phone,
                const std::vector<AssetBundle>& bundles);

/// A part of a library with its folders as they are transferred.
struct ChosenPart {
  Library library;
  std::shared_ptr<const TransferPlan> plan;  ///< nullptr if none was given
};
/// Returns the part that the call chooses. `folders` are the rows of the library, and `plan` was
/// made from them; it may be null. Throws as recordedFiles(), and UnknownFolder.
ChosenPart chosenPart(const CommandContext& context, Library library, Choosing::Folders folders,
                      std::shared_ptr<const TransferPlan> plan = nullptr);

}  // namespace tavrix::cli
