#pragma once

#include <string>
#include <string_view>

#include "foundation/Sentences.h"
#include "text/PlanSentences.h"

namespace tavrix {

/// Returns the reason why a file failed, for a line that already names the file. The reason of a
/// failed verification names it too, between its opening and its detail; that name is left out.
inline std::string reasonBesideName(Language language, const std::string& reason) {
  constexpr std::string_view beforeDetail = " — ";
  for (const Language written : {Language::russian, Language::english}) {
    std::string opening = say(written, sentences::verificationFailed, "", "");
    opening.resize(opening.size() - beforeDetail.size());
    const auto detail = reason.rfind(beforeDetail);
    if (!reason.starts_with(opening) || detail == std::string::npos) continue;
    return say(language, sentences::verificationFailedBeside,
               reason.substr(detail + beforeDetail.size()));
  }
  return reason;
}

}  // namespace tavrix
