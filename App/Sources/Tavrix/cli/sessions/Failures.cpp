#include "cli/sessions/Failures.h"

#include <algorithm>
#include <cerrno>
#include <new>

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
#include "sources/SnapshotSource.h"
#include "text/SentenceParts.h"

namespace tavrix::cli {
namespace {

std::string snapshotFaultText(Language language, const SnapshotError& error) {
  using Kind = SnapshotError::Kind;
  const std::string field = forSentence(error.field());
  switch (error.kind()) {
    case Kind::notJson:
      return say(language, sentences::snapshotNotJson);
    case Kind::tooLarge:
      return say(language, sentences::snapshotTooLarge);
    case Kind::notAList:
      return say(language, sentences::snapshotNotList);
    case Kind::missingField:
      return say(language, sentences::snapshotMissingField, error.item(), field);
    case Kind::wrongType:
      return say(language, sentences::snapshotWrongType, error.item(), field);
    case Kind::outOfRange:
      return say(language, sentences::snapshotOutOfRange, error.item(), field);
  }
  return {};
}

std::string destinationText(Language language, const DestinationError& error) {
  using Kind = DestinationError::Kind;
  const std::string path = forSentence(error.path());
  switch (error.kind()) {
    case Kind::missing:
      return say(language, sentences::destinationMissing, path);
    case Kind::parentMissing:
      return say(language, sentences::destinationParentMissing, path);
    case Kind::notFolder:
      return say(language, sentences::destinationNotFolder, path);
    case Kind::insideMedia:
      return say(language, sentences::destinationInsideSource, path);
    case Kind::holdsSource:
      return say(language, sentences::destinationHoldsSource, path);
    case Kind::busy:
      return say(language, sentences::destinationBusy, path);
  }
  return {};
}

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
  return {ExitStatus::stopped,
          say(language, sentences::snapshotWrong, printable(path), error.position().line,
              error.position().column, snapshotFaultText(language, error))};
}

CommandFailure snapshotFailure(Language language, const std::string& path, const FileError& error) {
  if (error.code() == ENOENT || error.code() == ENOTDIR) {
    return {ExitStatus::stopped, say(language, sentences::snapshotMissing, printable(path))};
  }
  return {ExitStatus::stopped, say(language, sentences::snapshotUnreadable, printable(path),
                                   tavrix::sentences::systemErrorText(language, error.code()))};
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
  return {ExitStatus::usage, say(language, sentences::settingBadValue, key, value,
                                 allowedValues(language, error.form, error.choices))};
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
    return {statusOf(fault), destinationText(language, fault)};
  } catch (const UnknownFolder& fault) {
    return unknownFolderFailure(language, fault);
  } catch (const DestinationMarker::MarkerError& fault) {
    return {ExitStatus::stopped,
            say(language, sentences::destinationNewer, forSentence(destination),
                forSentence(fault.fileName()), fault.version())};
  } catch (const MediaMissing& fault) {
    return {ExitStatus::stopped, say(language, sentences::mediaMissing, printable(fault.path()))};
  } catch (const FileError& fault) {
    return {ExitStatus::stopped, say(language, sentences::fileRefused, forSentence(fault.path()),
                                     tavrix::sentences::systemErrorText(language, fault.code()))};
  } catch (const OutputError& fault) {
    return {ExitStatus::stopped, outputText(language, fault.code())};
  } catch (const std::bad_alloc&) {
    return {ExitStatus::stopped, say(language, sentences::outOfMemory)};
  } catch (...) {
    return {ExitStatus::stopped, say(language, sentences::internalFault)};
  }
}

}  // namespace tavrix::cli
