#include "cli/printing/TemplateText.h"
#include "cli/printing/TextPrinter.h"
#include "cli/sentences/SettingsSentences.h"
#include "cli/sentences/TemplateSentences.h"
#include "foundation/Text.h"
#include "naming/NameTemplateCoding.h"

namespace tavrix::cli {
namespace {

constexpr const char* noValue = "—";

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
  if (setting.key == "nameTemplate") return templateText(NameTemplateCoding::decode(value));
  return printable(inOneLine(value));
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

void TextPrinter::templateLines(const NameTemplate& nameTemplate,
                                const std::string& systemLocaleID) {
  line("  " + templateText(nameTemplate));
  line("  " +
       say(language_, sentences::presetExample, templateExample(nameTemplate, systemLocaleID)));
}

void TextPrinter::presets(const std::vector<NamePresets::Builtin>& presets,
                          const std::string& systemLocaleID) {
  for (const NamePresets::Builtin& preset : presets) {
    line(std::string{language_ == Language::russian ? preset.russian : preset.english});
    templateLines(preset.nameTemplate, systemLocaleID);
  }
}

void TextPrinter::templates(const std::vector<NamePresets::Builtin>& builtins,
                            const std::vector<SavedPreset>& saved,
                            const std::string& systemLocaleID) {
  for (const NamePresets::Builtin& builtin : builtins) {
    line(say(language_, sentences::builtinPreset,
             language_ == Language::russian ? builtin.russian : builtin.english));
    templateLines(builtin.nameTemplate, systemLocaleID);
  }
  for (const SavedPreset& preset : saved) {
    line(say(language_, sentences::savedPreset, printable(preset.name)));
    templateLines(preset.nameTemplate, systemLocaleID);
  }
}

void TextPrinter::templateDeleted(const std::string& name) {
  line(say(language_, sentences::presetDeleted, printable(name)));
}

void TextPrinter::templatesForgotten() { line(say(language_, sentences::presetsForgotten)); }

}  // namespace tavrix::cli
