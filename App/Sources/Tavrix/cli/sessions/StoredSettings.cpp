#include "cli/sessions/StoredSettings.h"

#include <cerrno>

#include "cli/sentences/SettingNoteSentences.h"
#include "cli/sentences/SettingsSentences.h"
#include "foundation/Sentences.h"
#include "settings/PersistedSettings.h"
#include "text/SentenceParts.h"

namespace tavrix::cli {
namespace {

/// Returns the sentence for a file whose content is ignored.
std::string damageText(Language language, const DefaultsFault& fault) {
  const std::string path = forSentence(fault.path);
  if (!fault.position) return say(language, sentences::defaultsNoObject, path);
  return say(language, sentences::defaultsDamaged, path, fault.position->line,
             fault.position->column);
}

/// Returns the sentence for something else in place of the file.
std::string notFileText(Language language, const DefaultsFault& fault, bool isSaving) {
  std::string text = say(language, sentences::isFolder);
  if (fault.code == ELOOP) text = say(language, sentences::isLinkCircle);
  if (!fault.target.empty()) {
    text = say(language, sentences::isLinkToFolder, forSentence(fault.target));
  }
  return say(language, isSaving ? sentences::defaultsNotSavedNotFile : sentences::defaultsNotFile,
             forSentence(fault.path), text);
}

/// Returns the sentence for a fault while reading the settings or, if `isSaving`, changing them.
std::string faultText(Language language, const DefaultsFault& fault, bool isSaving) {
  switch (fault.kind) {
    case DefaultsFault::Kind::damaged:
      return damageText(language, fault);
    case DefaultsFault::Kind::setAside:
      return say(language, sentences::defaultsSetAside, forSentence(fault.keptAs));
    case DefaultsFault::Kind::unreadable:
      return say(language, sentences::defaultsUnreadable, forSentence(fault.path),
                 tavrix::sentences::systemErrorText(language, fault.code));
    case DefaultsFault::Kind::notFile:
      return notFileText(language, fault, isSaving);
    case DefaultsFault::Kind::unwritable:
      return say(language, sentences::defaultsNotSaved, forSentence(fault.path),
                 tavrix::sentences::systemErrorText(language, fault.code));
    case DefaultsFault::Kind::busy:
      return say(language, sentences::defaultsBusy, forSentence(fault.path));
    case DefaultsFault::Kind::tooLarge:
      return say(language, sentences::defaultsTooLarge, forSentence(fault.path));
  }
  return {};
}

}  // namespace

Settings initialSettings(const Surroundings& surroundings) {
  return tavrix::initialSettings(
      TimeZone::load(surroundings.systemTimeZoneID).value_or(TimeZone::utc()),
      surroundings.systemLocaleID);
}

std::vector<SavedPreset> keptPresets(const Surroundings& surroundings) {
  if (surroundings.defaults == nullptr) return {};
  return PersistedSettings::read(*surroundings.defaults, {}).savedPresets;
}

void tellDefaultsFaults(const Surroundings& surroundings, const Messages& messages) {
  if (surroundings.defaults == nullptr) return;
  for (const DefaultsFault& fault : surroundings.defaults->takeFaults()) {
    messages.warn(faultText(messages.form().language, fault, false));
  }
}

UserDefaults& changeableDefaults(const CommandContext& context) {
  const Surroundings& surroundings = context.surroundings;
  const auto fail = [&](const Sentence<>& sentence) {
    throw CommandFailure{ExitStatus::stopped, say(context.language(), sentence)};
  };
  if (isDemo(surroundings.environment)) fail(sentences::demoKeepsNothing);
  if (surroundings.defaults == nullptr) fail(sentences::defaultsPlaceUnknown);
  return *surroundings.defaults;
}

void keep(const CommandContext& context, const DefaultsChanges& changes) {
  UserDefaults& defaults = changeableDefaults(context);
  defaults.apply(changes);
  for (DefaultsFault fault : defaults.takeFaults()) {
    // A file that cannot be read takes no change either.
    if (fault.kind == DefaultsFault::Kind::unreadable) fault.kind = DefaultsFault::Kind::unwritable;
    if (losesChange(fault)) {
      throw CommandFailure{ExitStatus::stopped, faultText(context.language(), fault, true)};
    }
    context.warn(faultText(context.language(), fault, false));
  }
}

}  // namespace tavrix::cli
