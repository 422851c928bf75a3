#include "settings/GivenTemplate.h"

#include <algorithm>
#include <utility>

#include "foundation/Text.h"
#include "naming/NamePresets.h"

namespace tavrix {
namespace {

/// Returns true if the text begins as a JSON object does. A typed template never has a quotation
/// mark or nothing at all after its first brace.
bool looksLikeJson(std::string_view text) {
  text = trimmedWhiteSpace(withoutByteOrderMark(text));
  if (!text.starts_with('{')) return false;
  text = trimmedWhiteSpace(text.substr(1));
  return text.starts_with('"') || text.starts_with('}');
}

/// Returns the presets by all their titles.
std::vector<SavedPreset> titledPresets(const std::vector<SavedPreset>& saved) {
  std::vector<SavedPreset> presets;
  for (const NamePresets::Builtin& builtin : NamePresets::builtins()) {
    presets.push_back({std::string{builtin.russian}, builtin.nameTemplate});
    presets.push_back({std::string{builtin.english}, builtin.nameTemplate});
  }
  presets.insert(presets.end(), saved.begin(), saved.end());
  return presets;
}

const SavedPreset* presetOf(const std::vector<SavedPreset>& presets, std::string_view text) {
  const std::string_view title = trimmedWhiteSpace(text);
  auto found = std::find_if(presets.begin(), presets.end(),
                            [&](const SavedPreset& each) { return each.name == title; });
  if (found == presets.end()) {
    const std::string folded = caseFolded(title);
    found = std::find_if(presets.begin(), presets.end(),
                         [&](const SavedPreset& each) { return caseFolded(each.name) == folded; });
  }
  return found == presets.end() ? nullptr : &*found;
}

}  // namespace

std::variant<NameTemplate, TemplateFault> givenTemplate(std::string_view text,
                                                        const std::vector<SavedPreset>& saved) {
  if (looksLikeJson(text)) {
    try {
      return NameTemplateCoding::decodeText(text);
    } catch (const NameTemplateError& error) {
      return TemplateFault{error};
    }
  }
  auto typed = TypedTemplate::parse(text);
  if (auto* const nameTemplate = std::get_if<NameTemplate>(&typed)) return std::move(*nameTemplate);
  const auto presets = titledPresets(saved);
  if (const auto* const preset = presetOf(presets, text)) return preset->nameTemplate;
  auto error = std::get<TypedTemplateError>(std::move(typed));
  if (error.kind == TypedTemplateError::Kind::noBlock) {
    error.word = trimmedWhiteSpace(text);
    for (const SavedPreset& each : presets) error.allowed.push_back(each.name);
  }
  return TemplateFault{std::move(error)};
}

}  // namespace tavrix
