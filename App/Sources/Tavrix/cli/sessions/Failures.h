#pragma once

#include <exception>
#include <string>

#include "cli/call/ExitStatus.h"
#include "foundation/Sentence.h"
#include "foundation/files/FileError.h"
#include "media/Snapshot.h"
#include "settings/SettingKeys.h"

namespace tavrix::cli {

/// These functions turn a typed error into one sentence for people and an exit status.

/// Returns the failure for a snapshot file that cannot be read; `path` is the path of the file.
CommandFailure snapshotFailure(Language language, const std::string& path,
                               const SnapshotError& error);
CommandFailure snapshotFailure(Language language, const std::string& path, const FileError& error);

CommandFailure settingFailure(Language language, const SettingError& error);
/// Returns the failure for a wrong value of an environment variable that sets a setting.
CommandFailure variableFailure(Language language, std::string_view variable,
                               const SettingError& error);

/// Returns the failure for any error that a command did not handle. `destination` is the folder
/// that the command worked on, or empty.
CommandFailure failureOf(Language language, const std::string& destination,
                         const std::exception_ptr& error);

}  // namespace tavrix::cli
