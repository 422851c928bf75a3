#pragma once

#include <exception>
#include <optional>
#include <string>

#include "foundation/Sentence.h"
#include "foundation/files/FileError.h"
#include "media/Snapshot.h"

namespace tavrix {

/// These functions turn a typed error into one sentence for people: the problem and what to do.

/// Returns the sentence for an error of a destination, of a source's files, or of the system.
/// Returns nullopt for any other error. `destination` is the folder that was worked on, or empty.
std::optional<std::string> failureText(Language language, const std::string& destination,
                                       const std::exception_ptr& error);

/// Return the sentence for a snapshot file that cannot be read; `path` is the path of the file.
std::string snapshotFailureText(Language language, const std::string& path,
                                const SnapshotError& error);
std::string snapshotFailureText(Language language, const std::string& path, const FileError& error);

/// Returns the sentence for a source without a readable catalogue. It reports first what the user
/// can see: that nothing is at the path, or that it is not a folder.
std::string sourceFailureText(Language language, const std::string& source,
                              const std::string& snapshotPath, const FileError& error);
/// As above, for any error of a source that is a folder. Returns nullopt for an error of another
/// kind.
std::optional<std::string> sourceFailureText(Language language, const std::string& source,
                                             const std::exception_ptr& error);

}  // namespace tavrix
