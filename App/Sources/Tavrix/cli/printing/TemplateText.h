#pragma once

#include <string>

#include "foundation/json/JsonValue.h"
#include "naming/NameTemplate.h"

namespace tavrix::cli {

/// Returns a value as JSON on one line.
std::string inOneLine(const JsonValue& value);

/// Returns a template in the form in which it is given in a call: typed, or as JSON on one line if
/// it cannot be typed. Printable.
std::string templateText(const NameTemplate& nameTemplate);

/// Returns the name that a template gives to shots of three days in May 2026 in Rome. The words are
/// in the language of the template, as in the names of folders.
std::string templateExample(const NameTemplate& nameTemplate, const std::string& systemLocaleID);

}  // namespace tavrix::cli
