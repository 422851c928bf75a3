#include "cli/printing/JsonPrinter.h"
#include "naming/NameTemplateCoding.h"
#include "settings/defaults/DefaultsFile.h"

namespace tavrix::cli {
namespace {

void writeTemplate(JsonWriter& json, const NameTemplate& nameTemplate) {
  json.key("template");
  NameTemplateCoding::encode(nameTemplate, json);
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

void JsonPrinter::templateDeleted(const std::string& name) {
  JsonWriter json{sink_};
  json.beginObject().field("deleted", name).endObject().finish();
}

void JsonPrinter::templatesForgotten() { templates({}, {}, {}); }

}  // namespace tavrix::cli
