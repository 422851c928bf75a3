#include "cli/sessions/Failures.h"

#include <algorithm>
#include <array>
#include <cerrno>

#include "cli/call/Nearest.h"
#include "cli/call/Surroundings.h"
#include "cli/printing/SettingDescription.h"
#include "cli/sentences/ChoiceSentences.h"
#include "cli/sentences/CliSentences.h"
#include "cli/sentences/TemplateSentences.h"
#include "cli/sentences/VerifySentences.h"
#include "cli/sessions/TemplateFaults.h"
#include "foundation/Sentences.h"
#include "foundation/Text.h"
#include "library/Choice.h"
#include "runs/Destination.h"
#include "services/FailureText.h"
#include "text/SentenceParts.h"

namespace tavrix::cli {
namespace {

ExitStatus statusOf(const DestinationError& error) {
  using Kind = DestinationError::Kind;
  const bool isMisplaced = error.kind() == Kind::insideMedia || error.kind() == Kind::holdsSource;
  return isMisplaced ? ExitStatus::usage : ExitStatus::stopped;
}

/// Returns the sentence for a result that could not be written.
std::string outputText(Language language, int code) {
  if (code == EBADF) return say(language, sentences::outputClosed);
  const bool isFull = code == ENOSPC || code == EDQUOT || code == EFBIG;
  return say(language, isFull ? sentences::outputRefused : sentences::outputFailed,
             tavrix::sentences::systemErrorText(language, code));
}

/// Returns the folder that was probably meant: one spelled alike, otherwise one whose name contains
/// the text.
std::optional<std::string> meantFolder(const UnknownFolder& fault) {
  if (auto alike = nearest(fault.wanted(), fault.known())) return alike;
  const std::string part = caseFolded(replacingInvalidUtf8(fault.wanted()));
  const auto found =
      std::find_if(fault.known().begin(), fault.known().end(), [&](const std::string& name) {
        return caseFolded(replacingInvalidUtf8(name)).find(part) != std::string::npos;
      });
  const bool isFound = !part.empty() && found != fault.known().end();
  return isFound ? std::optional{*found} : std::nullopt;
}

/// Returns the word that was probably meant as the value of a setting.
std::optional<std::string> nearestValue(const SettingError& error) {
  if (error.form != SettingForm::boolean) return nearest(error.value, error.choices);
  return nearest(error.value, std::array{"true", "false"});
}

CommandFailure unknownFolderFailure(Language language, const UnknownFolder& fault) {
  const std::string wanted = forSentence(fault.wanted());
  const auto meant = meantFolder(fault);
  return {ExitStatus::usage,
          meant ? say(language, sentences::noSuchFolderLike, wanted, forSentence(*meant))
                : say(language, sentences::noSuchFolder, wanted)};
}

}  // namespace

CommandFailure snapshotFailure(Language language, const std::string& path,
                               const SnapshotError& error) {
  return {ExitStatus::stopped, snapshotFailureText(language, path, error)};
}

CommandFailure snapshotFailure(Language language, const std::string& path, const FileError& error) {
  return {ExitStatus::stopped, snapshotFailureText(language, path, error)};
}

CommandFailure settingFailure(Language language, const SettingError& error) {
  const std::string key = forSentence(error.key);
  switch (error.kind) {
    case SettingError::Kind::notAssignment:
      return {ExitStatus::usage, say(language, sentences::settingNotAssignment, key)};
    case SettingError::Kind::unknownKey:
      if (const auto meant = nearest(error.key, settingKeys())) {
        return {ExitStatus::usage, say(language, sentences::settingUnknownKeyLike, key,
                                       forSentence(error.value), *meant)};
      }
      return {ExitStatus::usage, say(language, sentences::settingUnknownKey, key,
                                     forSentence(error.value), joined(settingKeys()))};
    case SettingError::Kind::badValue:
      break;
  }
  const std::string value = forSentence(error.value);
  if (error.template_) {
    return {ExitStatus::usage, say(language, sentences::settingBadTemplate, key, value,
                                   templateFaultText(language, *error.template_, error.value))};
  }
  const std::string allowed = allowedValues(language, error.form, error.choices);
  if (const auto meant = nearestValue(error)) {
    return {ExitStatus::usage,
            say(language, sentences::settingBadValueLike, key, value, *meant, allowed)};
  }
  return {ExitStatus::usage, say(language, sentences::settingBadValue, key, value, allowed)};
}

CommandFailure variableFailure(Language language, std::string_view variable,
                               const SettingError& error) {
  return {ExitStatus::usage,
          say(language, sentences::variableBadValue, variable, forSentence(error.value),
              allowedValues(language, error.form, error.choices))};
}

CommandFailure failureOf(Language language, const std::string& destination,
                         const std::exception_ptr& error) {
  try {
    std::rethrow_exception(error);
  } catch (const CommandFailure& failure) {
    return failure;
  } catch (const DestinationError& fault) {
    return {statusOf(fault), *failureText(language, destination, error)};
  } catch (const UnknownFolder& fault) {
    return unknownFolderFailure(language, fault);
  } catch (const OutputError& fault) {
    return {ExitStatus::stopped, outputText(language, fault.code())};
  } catch (...) {
    const auto text = failureText(language, destination, error);
    return {ExitStatus::stopped, text.value_or(say(language, sentences::internalFault))};
  }
}

}  // namespace tavrix::cli
