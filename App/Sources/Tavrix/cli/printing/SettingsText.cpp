#include <fmt/format.h>

#include "cli/printing/TextPrinter.h"
#include "cli/sentences/SettingsSentences.h"
#include "foundation/Text.h"
#include "naming/NameTemplateCoding.h"
#include "settings/defaults/DefaultsFile.h"

namespace tavrix::cli {
namespace {

constexpr const char* noValue = "—";

std::string inOneLine(const JsonValue& value) {
  StringSink sink;
  JsonWriter json{sink, JsonLayout::line};
  writeValue(json, value);
  json.finish();
  std::string text = sink.text();
  text.pop_back();
  return text;
}

/// Returns the value in the form that `settings set` accepts.
std::string valueText(const KeptSetting& setting) {
  if (!setting.value) return noValue;
  const JsonValue& value = *setting.value;
  if (value.asString() != nullptr) return printable(*value.asString());
  const JsonValue* const latitude = value.member("latitude");
  const JsonValue* const longitude = value.member("longitude");
  if (setting.key == "homeOverride" && latitude != nullptr && longitude != nullptr) {
    return inOneLine(*latitude) + "," + inOneLine(*longitude);
  }
  return printable(inOneLine(value));
}

std::string templateLine(const NameTemplate& nameTemplate) {
  StringSink sink;
  JsonWriter json{sink, JsonLayout::line};
  NameTemplateCoding::encode(nameTemplate, json);
  json.finish();
  return "  " + printable(sink.text().substr(0, sink.text().size() - 1));
}

}  // namespace

void TextPrinter::settings(const std::vector<KeptSetting>& settings) {
  table({{say(language_, sentences::titleSetting)},
         {say(language_, sentences::titleState)},
         {say(language_, sentences::titleValue), false, true}})
      .write(sink_, settings.size(), [&](std::size_t row) -> Table::Cells {
        const KeptSetting& setting = settings[row];
        return {
            setting.key,
            say(language_, setting.isInitial ? sentences::valueIsInitial : sentences::valueIsSet),
            valueText(setting)};
      });
}

void TextPrinter::templates(const std::vector<NamePresets::Builtin>& builtins,
                            const std::vector<SavedPreset>& saved) {
  for (const NamePresets::Builtin& builtin : builtins) {
    line(say(language_, sentences::builtinPreset,
             language_ == Language::russian ? builtin.russian : builtin.english));
    line(templateLine(builtin.nameTemplate));
  }
  for (const SavedPreset& preset : saved) {
    line(say(language_, sentences::savedPreset, printable(preset.name)));
    line(templateLine(preset.nameTemplate));
  }
}

void TextPrinter::templateDeleted(const std::string& name) {
  line(say(language_, sentences::presetDeleted, printable(name)));
}

void TextPrinter::templatesForgotten() { line(say(language_, sentences::presetsForgotten)); }

}  // namespace tavrix::cli
