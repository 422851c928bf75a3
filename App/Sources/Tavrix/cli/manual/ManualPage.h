#pragma once

#include <string>
#include <string_view>

#include "foundation/Sentence.h"

namespace tavrix::cli {

/// Returns the manual page tavrix(1) in the language, as the source that scdoc reads. It is made
/// from the help texts, the table of commands and the settings.
std::string manualPage(Language language, std::string_view version);

}  // namespace tavrix::cli
