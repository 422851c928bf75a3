#include <algorithm>
#include <array>

#include "cli/call/Nearest.h"
#include "cli/commands/Commands.h"
#include "cli/printing/ResultPrinter.h"
#include "cli/sentences/TemplateSentences.h"
#include "cli/sessions/CommandContext.h"
#include "cli/sessions/StoredSettings.h"
#include "cli/sessions/TemplateFaults.h"
#include "foundation/json/JsonValue.h"
#include "naming/FolderName.h"
#include "naming/NamePresets.h"
#include "naming/NameRendering.h"
#include "text/SentenceParts.h"

namespace tavrix::cli {
namespace {

constexpr std::array<std::string_view, 7> contextFields{
    "dateStart", "dateEnd", "timeZone", "city", "countryName", "countryCode", "eventName"};

/// Reads the fields of a context. A field that is missing or null is unknown.
class ContextReader {
 public:
  ContextReader(Language language, const std::string& json) : language_(language) {
    try {
      json_ = parseJson(json);
    } catch (const JsonError& error) {
      fail(say(language_, sentences::jsonFault, error.position().line, error.position().column));
    }
    if (json_.asObject() == nullptr) fail(say(language_, sentences::templateNotObject));
    for (const auto& [key, value] : *json_.asObject()) checkIsKnown(key);
  }

  std::optional<std::string> text(std::string_view key) const {
    const JsonValue* const value = json_.member(key);
    if (value == nullptr || value->isNull()) return std::nullopt;
    if (value->asString() == nullptr) failField(key);
    return *value->asString();
  }
  std::optional<Instant> instant(std::string_view key) const {
    const auto found = text(key);
    if (!found) return std::nullopt;
    const auto instant = parseIso8601(*found);
    if (!instant) failField(key);
    return instant;
  }
  TimeZone zone(std::string_view key, const TimeZone& otherwise) const {
    const auto found = text(key);
    if (!found) return otherwise;
    const auto zone = TimeZone::load(*found);
    if (!zone) failField(key);
    return *zone;
  }

 private:
  void checkIsKnown(const std::string& key) const {
    if (std::find(contextFields.begin(), contextFields.end(), key) != contextFields.end()) return;
    const auto meant = nearest(key, contextFields);
    fail(say(language_, sentences::contextUnknownField, forSentence(key),
             meant ? say(language_, sentences::perhapsMeant, *meant) : "",
             joined({contextFields.begin(), contextFields.end()})));
  }
  [[noreturn]] void failField(std::string_view key) const {
    fail(say(language_, sentences::contextField, key));
  }
  [[noreturn]] void fail(const std::string& fault) const {
    throw CommandFailure{ExitStatus::usage, say(language_, sentences::templateRejected,
                                                say(language_, sentences::theContext), fault)};
  }

  Language language_;
  JsonValue json_;
};

}  // namespace

ExitStatus renderTemplate(const CommandContext& context) {
  const NameTemplate nameTemplate = readTemplate(context.language(), *context.call.nameTemplate,
                                                 keptPresets(context.surroundings));
  const ContextReader reader{context.language(), *context.call.context};
  NameContext known;
  known.dateStart = reader.instant("dateStart");
  known.dateEnd = reader.instant("dateEnd");
  known.timeZone = reader.zone("timeZone", context.settings.gathering.timeZone);
  known.city = reader.text("city");
  known.countryName = reader.text("countryName");
  known.countryCode = reader.text("countryCode");
  known.eventName = reader.text("eventName");
  context.printer.name(
      NameRendering::render(nameTemplate, known, context.surroundings.systemLocaleID));
  return ExitStatus::done;
}

ExitStatus listPresets(const CommandContext& context) {
  context.printer.presets(NamePresets::builtins(), context.surroundings.systemLocaleID);
  return ExitStatus::done;
}

ExitStatus sanitizeText(const CommandContext& context) {
  context.printer.name(FolderName::sanitise(context.call.operands.at(0)));
  return ExitStatus::done;
}

}  // namespace tavrix::cli
