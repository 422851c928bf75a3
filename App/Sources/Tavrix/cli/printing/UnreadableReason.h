#pragma once

#include <cerrno>
#include <string>
#include <vector>

#include "cli/sentences/VerifySentences.h"
#include "foundation/Sentences.h"
#include "foundation/files/Folder.h"

namespace tavrix::cli {

/// Returns why something in a destination cannot be read, given the error code (errno).
inline std::string unreadableReason(Language language, int code) {
  return code == EXDEV ? say(language, sentences::pathLeadsOut)
                       : tavrix::sentences::systemErrorText(language, code);
}

}  // namespace tavrix::cli
