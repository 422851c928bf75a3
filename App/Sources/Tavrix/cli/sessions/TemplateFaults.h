#pragma once

#include <string>
#include <string_view>

#include "foundation/Sentence.h"
#include "naming/NameTemplateCoding.h"

namespace tavrix::cli {

/// Reads the JSON text of a template that was given in a call. Throws CommandFailure.
NameTemplate readTemplate(Language language, const std::string& json);

/// Returns the fault of a template as a part of a sentence. `nameTemplate` is the text that was
/// read.
std::string templateFaultText(Language language, const NameTemplateError& error,
                              std::string_view nameTemplate);

}  // namespace tavrix::cli
