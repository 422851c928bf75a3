#pragma once

#include <string>
#include <string_view>

#include "foundation/Sentence.h"
#include "settings/GivenTemplate.h"

namespace tavrix::cli {

/// Returns the template that was given in a call (see givenTemplate()). Throws CommandFailure.
NameTemplate readTemplate(Language language, const std::string& text,
                          const std::vector<SavedPreset>& saved);

/// Return the fault of a template as a part of a sentence. `nameTemplate` is the text that was
/// read.
std::string templateFaultText(Language language, const TemplateFault& fault,
                              std::string_view nameTemplate);
std::string typedTemplateFaultText(Language language, const TypedTemplateError& error);

}  // namespace tavrix::cli
