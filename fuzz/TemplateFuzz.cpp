#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "foundation/Text.h"
#include "foundation/Time.h"
#include "naming/FolderName.h"
#include "naming/NameRendering.h"
#include "naming/NameTemplateCoding.h"

// Reads arbitrary bytes as the JSON of a name template. They are rejected, or the template survives
// writing and reading and gives names that are safe for a folder.

namespace {

using namespace tavrix;

void require(bool condition) {
  if (!condition) std::abort();
}

bool isSafe(std::string_view name) {
  return !name.empty() && name.size() <= FolderName::maxBytes && name.front() != '.' &&
         name.back() != '.' && name.back() != ' ' && replacingInvalidUtf8(name) == name &&
         FolderName::replacingForbidden(name) == name;
}

NameContext fullContext() {
  NameContext context;
  context.dateStart = parseIso8601("2026-08-01T10:00:00Z");
  context.dateEnd = parseIso8601("2026-08-03T10:00:00Z");
  context.city = "Санкт-Петербург";
  context.countryName = "C:\\Côte d’Ivoire";
  context.countryCode = "\xFF.";
  return context;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  NameTemplate decoded;
  try {
    decoded = NameTemplateCoding::decodeText({reinterpret_cast<const char*>(data), size});
  } catch (const NameTemplateError&) {
    return 0;
  }
  require(NameTemplateCoding::decodeText(NameTemplateCoding::encodeText(decoded)) == decoded);
  static const NameContext context = fullContext();
  for (const char* const locale : {"ru_RU", "en_US", "tr_TR"}) {
    require(isSafe(NameRendering::render(decoded, context, locale)));
    require(NameRendering::render(decoded, NameContext{}, locale) == FolderName::untitled);
  }
  return 0;
}
