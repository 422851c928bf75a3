#pragma once

#include <string>
#include <variant>
#include <vector>

#include "cli/CommandTable.h"
#include "cli/call/Invocation.h"
#include "cli/call/Surroundings.h"
#include "cli/printing/Messages.h"

namespace tavrix::cli {

/// A call of one command.
struct CommandRequest {
  const CommandSpec* command = nullptr;  ///< a row of commandTable()
  Invocation call;
};

/// A call for the help of one command, or of the program if `command` is null.
struct HelpRequest {
  const CommandSpec* command = nullptr;
  Language language = Language::russian;
};

struct VersionRequest {};

using Request = std::variant<CommandRequest, HelpRequest, VersionRequest>;

/// Returns the language of messages: the last `--lang` among the arguments, else the one that the
/// user keeps, else Russian. Ignores every other fault in the arguments.
Language languageOf(const std::vector<std::string>& arguments, const Surroundings& surroundings);

/// Returns the form of standard error, also for arguments that cannot be parsed.
Messages::Form messagesForm(const std::vector<std::string>& arguments,
                            const Surroundings& surroundings);

/// Parses the arguments, without the program's own name. If the environment names a demo folder,
/// the source may be left out. Throws CommandFailure.
Request parseArguments(const std::vector<std::string>& arguments, const Surroundings& surroundings);

/// Runs the command that the arguments (without the program's own name) ask for. Prints errors on
/// standard error and returns the exit status.
ExitStatus runCommandLine(const std::vector<std::string>& arguments,
                          const Surroundings& surroundings);

}  // namespace tavrix::cli
