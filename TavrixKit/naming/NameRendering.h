#pragma once

#include <string>

#include "naming/NameTemplate.h"

namespace tavrix {

/// Turns templates into names. Pure functions; the machine's locale is an argument. Ill-formed
/// UTF-8 in the input becomes U+FFFD.
namespace NameRendering {

/// Returns `systemLocaleID` for `system`, "ru_RU" or "en_US" otherwise.
std::string localeID(NameLanguage language, const std::string& systemLocaleID);

/// Returns the text of one token, not sanitised. It is empty if the context lacks the value. Digits
/// are ASCII; days are those of the Gregorian calendar in the context's time zone. If one end of a
/// period is unknown, the text is the day of the other end.
std::string renderToken(const NameToken& token, const NameContext& context,
                        const std::string& localeID);

/// Returns the finished name, sanitised by FolderName. It is never empty; if no data block has a
/// text, it is FolderName::untitled. Literals before the first data block are kept. Any other
/// literal is kept only if a data block before it has a text and the next data block, if there is
/// one, has a text, too.
std::string render(const NameTemplate& nameTemplate, const NameContext& context,
                   const std::string& systemLocaleID);

}  // namespace NameRendering

}  // namespace tavrix
