#pragma once

#include <string_view>
#include <variant>
#include <vector>

#include "naming/NameTemplateCoding.h"
#include "naming/TypedTemplate.h"
#include "settings/SavedPreset.h"

namespace tavrix {

/// Why a template that the user gave was rejected: as JSON, or as a typed template.
using TemplateFault = std::variant<NameTemplateError, TypedTemplateError>;

/// Returns the template that the user gave as JSON, typed ("{year} {city}"), or by the title of a
/// built-in or saved preset. A text that is both typed and a title is a typed template. Letter case
/// and spaces around a title do not matter, but a title of the same letter case comes first. If the
/// text has no block and is no title, `allowed` of the error lists the titles.
std::variant<NameTemplate, TemplateFault> givenTemplate(std::string_view text,
                                                        const std::vector<SavedPreset>& saved);

}  // namespace tavrix
