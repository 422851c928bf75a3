#pragma once

#include <exception>
#include <string>

#include "cli/call/ExitStatus.h"
#include "foundation/Sentence.h"
#include "foundation/files/FileError.h"
#include "media/Snapshot.h"
#include "settings/SettingKeys.h"

namespace tavrix::cli {

/// Typed errors as one sentence for people, each with the status that it ends the program with.

/// A folder's snapshot file that does not read; `path` is the file's.
CommandFailure snapshotFailure(Language language, const std::string& path,
                               const SnapshotError& error);
CommandFailure snapshotFailure(Language language, const std::string& path, const FileError& error);

CommandFailure settingFailure(Language language, const SettingError& error);
/// A value of an environment variable that stands for a setting.
CommandFailure variableFailure(Language language, std::string_view variable,
                               const SettingError& error);

/// Any error that a command let through. `destination` is the folder that it worked on, if any.
CommandFailure failureOf(Language language, const std::string& destination,
                         const std::exception_ptr& error);

}  // namespace tavrix::cli
