#include "cli/call/Wrapping.h"
#include "cli/printing/SettingDescription.h"
#include "cli/printing/TemplateText.h"
#include "cli/printing/TextPrinter.h"
#include "cli/sentences/SettingMeanings.h"
#include "cli/sentences/SettingsSentences.h"
#include "cli/sentences/TemplateSentences.h"
#include "foundation/Text.h"
#include "naming/NameTemplateCoding.h"

namespace tavrix::cli {
void TextPrinter::settings(const std::vector<KeptSetting>& settings) {
  table({{say(language_, sentences::titleSetting)},
         {say(language_, sentences::titleState)},
         {say(language_, sentences::titleValue), false, true}})
      .write(sink_, settings.size(), [&](std::size_t row) -> Table::Cells {
        const KeptSetting& setting = settings[row];
        return {
            setting.key,
            say(language_, setting.isInitial ? sentences::valueIsInitial : sentences::valueIsSet),
            settingValueText(setting.key, setting.value)};
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

void TextPrinter::allSettings(const std::vector<SettingDescription>& settings) {
  table({{say(language_, sentences::titleSetting)},
         {say(language_, sentences::titleInitially)},
         {.title = say(language_, sentences::titleMeaning), .wraps = true}})
      .write(sink_, settings.size(), [&](std::size_t row) -> Table::Cells {
        const SettingDescription& setting = settings[row];
        return {setting.key, initialText(language_, setting),
                say(language_,
                    setting.isKept ? sentences::meaningAndKeptValues : sentences::meaningAndValues,
                    say(language_, setting.meaning), valuesText(language_, setting))};
      });
  line("");
  for (const std::string& part :
       wrapped(say(language_, sentences::allSettingsHint), columns_.value_or(helpColumns))) {
    line(part);
  }
}

void TextPrinter::help(const HelpTopic& topic) {
  if (topic.texts) {
    sink_.write(language_ == Language::russian ? topic.texts->russian : topic.texts->english);
  }
  if (topic.texts && topic.setting) line("");
  if (topic.setting) oneSetting(*topic.setting);
}

void TextPrinter::oneSetting(const SettingDescription& setting) {
  const std::string head =
      say(language_, sentences::keyAndMeaning, setting.key, say(language_, setting.meaning));
  for (const std::string& part : wrapped(head, helpColumns)) line(part);
  line("");
  labelled(settingRows(language_, setting), "  ", helpColumns);
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

void TextPrinter::templateSaved(const std::vector<NamePresets::Builtin>& /*builtins*/,
                                const std::vector<SavedPreset>& /*saved*/,
                                const SavedPreset& changed, const std::string& systemLocaleID) {
  templates({}, {changed}, systemLocaleID);
}

void TextPrinter::templateDeleted(const std::string& name) {
  line(say(language_, sentences::presetDeleted, printable(name)));
}

void TextPrinter::templatesForgotten(const std::vector<NamePresets::Builtin>& /*builtins*/) {
  line(say(language_, sentences::presetsForgotten));
}

}  // namespace tavrix::cli
