#pragma once

#include <string>

#include "naming/NameTemplate.h"

namespace tavrix {

/// Turns templates into names. Pure functions; the machine's locale is an argument. Ill-formed
/// UTF-8 in what goes in comes out as U+FFFD.
namespace NameRendering {

/// `systemLocaleID`, "ru_RU" or "en_US".
std::string localeID(NameLanguage language, const std::string& systemLocaleID);

/// The text of one token, not sanitised; empty when the context lacks the datum. Digits are ASCII,
/// days are of the Gregorian calendar in the context's time zone. A period of which one end is
/// unknown is the other's day.
std::string renderToken(const NameToken& token, const NameContext& context,
                        const std::string& localeID);

/// The finished name, sanitised by FolderName: never empty, FolderName::untitled when no data block
/// gave a text. A data block that is empty takes the literals in front of it along; literals before
/// the first data block and after the last value stay.
std::string render(const NameTemplate& nameTemplate, const NameContext& context,
                   const std::string& systemLocaleID);

}  // namespace NameRendering

}  // namespace tavrix
