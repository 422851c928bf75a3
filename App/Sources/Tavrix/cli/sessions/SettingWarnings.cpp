#include "cli/sessions/SettingWarnings.h"

#include <algorithm>
#include <tuple>

#include "cli/printing/SettingDescription.h"
#include "cli/printing/TemplateText.h"
#include "cli/sentences/SettingNoteSentences.h"
#include "cli/sessions/Failures.h"
#include "cli/sessions/StoredSettings.h"
#include "foundation/TimeZone.h"
#include "settings/IdleSettings.h"
#include "settings/PersistedSettings.h"
#include "settings/SettingKeys.h"
#include "text/SentenceParts.h"

namespace tavrix::cli {
namespace {

std::string_view keyOf(std::string_view assignment) {
  return assignment.substr(0, assignment.find('='));
}

std::string idleText(Language language, const IdleSetting& idle) {
  using enum IdleSetting::Reason;
  switch (idle.reason) {
    case needsOther:
      return say(language, sentences::settingNeedsOther, idle.key, idle.other);
    case overruled:
      return say(language, sentences::settingOverruled, idle.key, idle.other);
    case otherModes:
      return say(language, sentences::settingOtherModes, idle.key, idle.other);
    case unknownGroups:
      return say(language, sentences::settingUnknownGroups, idle.key,
                 forSentence(joined({idle.ids.begin(), idle.ids.end()})));
  }
  return {};
}

/// Returns the values that a key may have in the file.
std::string allowedInFile(Language language, const PersistedSettings::SkippedObject& skipped) {
  const auto form = settingForm(skipped.setting);
  if (!form) return say(language, sentences::allowedPresetList);
  if (*form == SettingForm::point) return say(language, sentences::allowedHomeObject);
  if (*form == SettingForm::nameTemplate) return say(language, sentences::allowedTemplateObject);
  return allowedValues(language, *form, settingChoices(skipped.setting));
}

}  // namespace

bool sets(const Invocation& call, std::string_view key) {
  return std::any_of(call.settings.begin(), call.settings.end(),
                     [&](std::string_view assignment) { return keyOf(assignment) == key; });
}

void checkPeriod(const Invocation& call, const Settings& settings) {
  const auto& [from, to] = std::tie(settings.content.periodFrom, settings.content.periodTo);
  if (!from || !to || *from <= *to) return;
  failUsage(say(call.language, sentences::periodReversed, dayText(*from), dayText(*to)));
}

void tellIdleSettings(const CommandContext& context, const std::vector<FolderNaming::Row>& rows) {
  std::vector<std::string_view> keys;
  for (const std::string& assignment : context.call.settings) keys.push_back(keyOf(assignment));
  if (keys.empty()) return;
  for (const IdleSetting& idle : idleSettings(context.settings, keys, rows)) {
    context.warn(idleText(context.language(), idle));
  }
}

void tellSkippedDefaults(const Surroundings& surroundings, const Messages& messages) {
  const Language language = messages.form().language;
  if (surroundings.defaults == nullptr) return;
  const UserDefaults& defaults = *surroundings.defaults;
  const auto tell = [&](std::string_view key, const JsonValue& object, const std::string& allowed) {
    messages.warn(say(language, sentences::defaultsValueSkipped, forSentence(defaults.path()), key,
                      forSentence(inOneLine(object)), allowed));
  };
  for (const auto& skipped : PersistedSettings::skipped(defaults)) {
    tell(skipped.key, skipped.object, allowedInFile(language, skipped));
  }
  const auto kept = defaults.object(languageKey);
  if (kept && !keptLanguage(&defaults)) tell(languageKey, *kept, "ru, en, system");
}

void tellUnknownTimeZone(const Invocation& call, const Surroundings& surroundings,
                         const Messages& messages) {
  const auto value = variable(surroundings.environment, "TZ");
  const bool isChosen =
      sets(call, "timeZoneID") || variable(surroundings.environment, "DEMO_TIME_ZONE");
  if (!value || isChosen || timeZoneOfVariable(*value)) return;
  messages.warn(say(call.language, sentences::unknownTimeZone, forSentence(*value),
                    surroundings.systemTimeZoneID));
}

}  // namespace tavrix::cli
