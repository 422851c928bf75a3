#pragma once

#include <string>

#include "foundation/Sentence.h"

namespace tavrix::cli {
namespace help {
struct HelpText;
}

/// Returns the help of a command followed by the options of every command. A null `command` means
/// the program itself.
std::string helpText(Language language, const help::HelpText* command);

}  // namespace tavrix::cli
