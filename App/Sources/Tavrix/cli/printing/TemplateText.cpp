#include "cli/printing/TemplateText.h"

#include "cli/sentences/TemplateSentences.h"
#include "foundation/Text.h"
#include "naming/FolderName.h"
#include "naming/NameRendering.h"
#include "naming/NameTemplateCoding.h"
#include "naming/TypedTemplate.h"
#include "settings/defaults/DefaultsFile.h"

namespace tavrix::cli {
namespace {

/// Returns what `write` writes as one document, on one line.
template <typename Write>
std::string jsonLine(const Write& write) {
  StringSink sink;
  JsonWriter json{sink, JsonLayout::line};
  write(json);
  json.finish();
  std::string text = sink.text();
  text.pop_back();
  return text;
}

}  // namespace

std::string inOneLine(const JsonValue& value) {
  return jsonLine([&](JsonWriter& json) { writeValue(json, value); });
}

std::string templateText(const NameTemplate& nameTemplate) {
  if (auto typed = TypedTemplate::print(nameTemplate)) return *std::move(typed);
  return printable(
      jsonLine([&](JsonWriter& json) { NameTemplateCoding::encode(nameTemplate, json); }));
}

std::string templateExample(const NameTemplate& nameTemplate, const std::string& systemLocaleID) {
  constexpr const char* firstDay = "2026-05-20";
  const std::string locale = NameRendering::localeID(nameTemplate.language, systemLocaleID);
  const Language language = languageOfLocale(locale);
  NameContext context;
  context.dateStart = parseIso8601(firstDay + std::string{"T12:00:00Z"});
  context.dateEnd = parseIso8601("2026-05-22T12:00:00Z");
  context.city = say(language, sentences::exampleCity);
  context.countryName = say(language, sentences::exampleCountry);
  context.countryCode = "IT";
  std::string name = NameRendering::render(nameTemplate, context, systemLocaleID);
  // A folder whose template gives nothing is named by its first day.
  return name == FolderName::untitled ? firstDay : printable(name);
}

}  // namespace tavrix::cli
