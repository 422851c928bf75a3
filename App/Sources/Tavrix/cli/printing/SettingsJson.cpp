#include "cli/printing/JsonPrinter.h"
#include "naming/NameTemplateCoding.h"
#include "settings/defaults/DefaultsFile.h"

namespace tavrix::cli {
namespace {

void writeTemplate(JsonWriter& json, const NameTemplate& nameTemplate) {
  json.key("template");
  NameTemplateCoding::encode(nameTemplate, json);
}

/// Writes an object with a text in each language.
void writeTexts(JsonWriter& json, std::string_view key, const std::string& english,
                const std::string& russian) {
  json.key(key).beginObject().field("en", english).field("ru", russian).endObject();
}

void writeDescription(JsonWriter& json, const SettingDescription& setting) {
  using enum Language;
  json.beginObject().field("key", setting.key);
  writeTexts(json, "meaning", say(english, setting.meaning), say(russian, setting.meaning));
  writeTexts(json, "values", valuesText(english, setting), valuesText(russian, setting));
  if (!setting.choices.empty()) {
    json.key("choices").beginArray();
    for (const std::string_view choice : setting.choices) json.value(choice);
    json.endArray();
  }
  if (setting.initial) writeValue(json.key("initial"), *setting.initial);
  json.field("kept", setting.isKept).endObject();
}

}  // namespace

void JsonPrinter::settings(const std::vector<KeptSetting>& settings) {
  JsonWriter json{sink_};
  json.beginArray();
  for (const KeptSetting& setting : settings) {
    json.beginObject().field("key", setting.key);
    if (setting.value) writeValue(json.key("value"), *setting.value);
    json.field("isInitial", setting.isInitial).endObject();
  }
  json.endArray().finish();
}

void JsonPrinter::allSettings(const std::vector<SettingDescription>& settings) {
  JsonWriter json{sink_};
  json.beginArray();
  for (const SettingDescription& setting : settings) writeDescription(json, setting);
  json.endArray().finish();
}

void JsonPrinter::help(const HelpTopic& topic) {
  JsonWriter json{sink_};
  json.beginObject();
  if (topic.texts) writeTexts(json, "text", topic.texts->english, topic.texts->russian);
  if (topic.setting) writeDescription(json.key("setting"), *topic.setting);
  json.endObject().finish();
}

void JsonPrinter::templates(const std::vector<NamePresets::Builtin>& builtins,
                            const std::vector<SavedPreset>& saved, const std::string&) {
  JsonWriter json{sink_};
  json.beginObject().key("builtin").beginArray();
  for (const NamePresets::Builtin& builtin : builtins) {
    json.beginObject().field("russian", builtin.russian).field("english", builtin.english);
    writeTemplate(json, builtin.nameTemplate);
    json.endObject();
  }
  json.endArray().key("saved").beginArray();
  for (const SavedPreset& preset : saved) {
    json.beginObject().field("name", preset.name);
    writeTemplate(json, preset.nameTemplate);
    json.endObject();
  }
  json.endArray().endObject().finish();
}

void JsonPrinter::templateSaved(const std::vector<NamePresets::Builtin>& builtins,
                                const std::vector<SavedPreset>& saved,
                                const SavedPreset& /*changed*/, const std::string& systemLocaleID) {
  templates(builtins, saved, systemLocaleID);
}

void JsonPrinter::templateDeleted(const std::string& name) {
  JsonWriter json{sink_};
  json.beginObject().field("deleted", name).endObject().finish();
}

void JsonPrinter::templatesForgotten(const std::vector<NamePresets::Builtin>& builtins) {
  templates(builtins, {}, {});
}

}  // namespace tavrix::cli
