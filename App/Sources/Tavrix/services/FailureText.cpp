#include "services/FailureText.h"

#include <cerrno>
#include <filesystem>
#include <new>

#include "foundation/Sentences.h"
#include "foundation/Text.h"
#include "runs/Destination.h"
#include "sources/SnapshotSource.h"
#include "text/FailureSentences.h"
#include "text/SentenceParts.h"

namespace tavrix {
namespace {

constexpr std::string_view snapshotName = "snapshot.json";

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
    case Kind::changed:
      return say(language, sentences::destinationChanged, path);
  }
  return {};
}

}  // namespace

std::optional<std::string> failureText(Language language, const std::string& destination,
                                       const std::exception_ptr& error) {
  try {
    std::rethrow_exception(error);
  } catch (const DestinationError& fault) {
    return destinationText(language, fault);
  } catch (const DestinationMarker::MarkerError& fault) {
    return say(language, sentences::destinationNewer, forSentence(destination),
               forSentence(fault.fileName()), fault.version());
  } catch (const MediaMissing& fault) {
    return say(language, sentences::mediaMissing, printable(fault.path()));
  } catch (const FileError& fault) {
    return say(language, sentences::fileRefused, forSentence(fault.path()),
               sentences::systemErrorText(language, fault.code()));
  } catch (const std::bad_alloc&) {
    return say(language, sentences::outOfMemory);
  } catch (...) {
    return std::nullopt;
  }
}

std::string snapshotFailureText(Language language, const std::string& path,
                                const SnapshotError& error) {
  return say(language, sentences::snapshotWrong, printable(path), error.position().line,
             error.position().column, snapshotFaultText(language, error));
}

std::string snapshotFailureText(Language language, const std::string& path,
                                const FileError& error) {
  if (error.code() == ENOENT || error.code() == ENOTDIR) {
    return say(language, sentences::snapshotMissing, printable(path));
  }
  return say(language, sentences::snapshotUnreadable, printable(path),
             sentences::systemErrorText(language, error.code()));
}

std::string sourceFailureText(Language language, const std::string& source,
                              const std::string& snapshotPath, const FileError& error) {
  const std::filesystem::path path{source};
  std::error_code fault;
  const auto status = std::filesystem::status(path, fault);
  if (status.type() == std::filesystem::file_type::not_found) {
    return say(language, sentences::sourceMissing, printable(source));
  }
  if (!std::filesystem::exists(status) || std::filesystem::is_directory(status)) {
    return snapshotFailureText(language, snapshotPath, error);
  }
  if (path.filename() != snapshotName) {
    return say(language, sentences::sourceIsFile, printable(source));
  }
  const std::string folder = path.has_parent_path() ? path.parent_path().string() : ".";
  return say(language, sentences::sourceIsCatalogue, printable(source), printable(folder));
}

std::optional<std::string> sourceFailureText(Language language, const std::string& source,
                                             const std::exception_ptr& error) {
  const std::string snapshotPath = (std::filesystem::path{source} / snapshotName).string();
  try {
    std::rethrow_exception(error);
  } catch (const SnapshotError& fault) {
    return snapshotFailureText(language, snapshotPath, fault);
  } catch (const FileError& fault) {
    return sourceFailureText(language, source, snapshotPath, fault);
  } catch (...) {
    return failureText(language, {}, error);
  }
}

}  // namespace tavrix
