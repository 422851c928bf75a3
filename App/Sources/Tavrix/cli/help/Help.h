#pragma once

#include <string>

#include "foundation/Sentence.h"

namespace tavrix::cli {
namespace help {
struct HelpText;
}

/// Returns the text of a command, with that of the options that it shares with others.
std::string commandText(Language language, const help::HelpText& command);

/// Returns the help of a command followed by the options of every command. A null `command` means
/// the program itself.
std::string helpText(Language language, const help::HelpText* command);

}  // namespace tavrix::cli
