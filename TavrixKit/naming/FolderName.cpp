#include "naming/FolderName.h"

#include <algorithm>

#include "foundation/Text.h"

namespace tavrix::FolderName {
namespace {

bool isForbiddenAscii(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < 0x20 || byte == 0x7F || forbiddenCharacters.find(c) != std::string_view::npos;
}

/// Returns true if the text begins with a control character beyond ASCII: U+0080 to U+009F, which
/// are C2 80 to C2 9F in UTF-8.
bool beginsLatinControl(std::string_view text) {
  return text.size() > 1 && text[0] == '\xC2' && static_cast<unsigned char>(text[1]) < 0xA0;
}

}  // namespace

std::string replacingForbidden(std::string_view text) {
  const std::string valid = replacingInvalidUtf8(text);
  std::string result;
  result.reserve(valid.size());
  for (std::size_t at = 0; at < valid.size(); ++at) {
    const bool isLatinControl = beginsLatinControl(std::string_view{valid}.substr(at));
    result += isLatinControl || isForbiddenAscii(valid[at]) ? '-' : valid[at];
    if (isLatinControl) ++at;
  }
  return result;
}

std::string sanitise(std::string_view text) {
  const std::string allowed = replacingForbidden(text);
  std::string_view name = trimmedWhiteSpace(allowed);
  name.remove_prefix(std::min(name.find_first_not_of('.'), name.size()));
  name = graphemePrefix(name, maxBytes);
  while (name.ends_with('.') || name.ends_with(' ')) name.remove_suffix(1);
  return std::string{name.empty() ? untitled : name};
}

}  // namespace tavrix::FolderName
