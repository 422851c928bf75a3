#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "foundation/Text.h"
#include "foundation/Time.h"
#include "naming/FolderName.h"
#include "naming/NameRendering.h"
#include "naming/NameTemplateCoding.h"
#include "naming/TypedTemplate.h"

// Reads arbitrary bytes as the JSON of a name template and as a typed one. They are rejected, or
// the template survives writing and reading and gives names that are safe for a folder.

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

void check(const NameTemplate& nameTemplate) {
  require(NameTemplateCoding::decodeText(NameTemplateCoding::encodeText(nameTemplate)) ==
          nameTemplate);
  if (const auto typed = TypedTemplate::print(nameTemplate)) {
    require(std::get<NameTemplate>(TypedTemplate::parse(*typed)) == nameTemplate);
  }
  static const NameContext context = fullContext();
  for (const char* const locale : {"ru_RU", "en_US", "tr_TR"}) {
    require(isSafe(NameRendering::render(nameTemplate, context, locale)));
    require(NameRendering::render(nameTemplate, NameContext{}, locale) == FolderName::untitled);
  }
}

void checkTyped(std::string_view text) {
  const auto read = TypedTemplate::parse(text);
  if (const auto* const nameTemplate = std::get_if<NameTemplate>(&read)) {
    require(TypedTemplate::print(*nameTemplate).has_value());
    check(*nameTemplate);
  } else {
    const auto& error = std::get<TypedTemplateError>(read);
    require(error.column >= 1 && error.column <= text.size() + 1);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text{reinterpret_cast<const char*>(data), size};
  checkTyped(text);
  NameTemplate decoded;
  try {
    decoded = NameTemplateCoding::decodeText(text);
  } catch (const NameTemplateError&) {
    return 0;
  }
  check(decoded);
  return 0;
}
