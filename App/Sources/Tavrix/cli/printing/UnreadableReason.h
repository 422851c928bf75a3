#pragma once

#include <cerrno>
#include <string>
#include <vector>

#include "cli/VerifySentences.h"
#include "foundation/Sentences.h"
#include "foundation/files/Folder.h"

namespace tavrix::cli {

/// Why something in a destination cannot be read, by the system's code (errno).
inline std::string unreadableReason(Language language, int code) {
  return code == EXDEV ? say(language, sentences::pathLeadsOut)
                       : tavrix::sentences::systemErrorText(language, code);
}

}  // namespace tavrix::cli
