#include "runs/DestinationReturn.h"

#include <algorithm>
#include <cerrno>

#include "foundation/files/FileError.h"
#include "transfer/FileNames.h"

namespace tavrix {
namespace {

/// The files that a run counts as copied or found, compared with those of a folder.
struct FilesThere {
  std::uint64_t copied = 0;  ///< by this run
  bool areAll = true;        ///< no file that the run counts is missing
};

/// Returns the path of the archive into which a path leads; nullopt if it leads into none.
std::optional<std::string> archiveOf(const std::string& path) {
  constexpr std::string_view ending = ".zip/";
  const auto end = path.find(ending);
  if (end == std::string::npos) return std::nullopt;
  return path.substr(0, end + ending.size() - 1);
}

FilesThere filesThere(const WrittenDestination& destination, const Folder& folder) {
  FilesThere there;
  std::optional<std::string> lastArchive;
  const auto isThere = [&](const std::string& path, std::optional<std::uint64_t> size) {
    const auto status = folder.status(path);
    return status && status->type == FileStatus::Type::file &&
           size.value_or(status->size) == status->size;
  };
  for (const FileOutcome& file : destination.report->files) {
    if (!file.path) continue;
    if (!file.is<FileOutcome::AlreadyThere>()) ++there.copied;
    const auto archive = destination.isPacked ? archiveOf(*file.path) : std::nullopt;
    if (archive && archive == lastArchive) continue;
    // An archive got its name after it was synced.
    there.areAll = archive ? isThere(*archive, {}) : isThere(*file.path, file.bytesOnDisk);
    if (!there.areAll) return there;
    lastArchive = archive;
  }
  const auto& known = destination.plan->knownPaths;
  there.areAll = std::all_of(known.begin(), known.end(),
                             [&](const std::string& path) { return isThere(path, {}); });
  return there;
}

/// Returns true if the run has left its record in the folder, or files that it has not packed yet.
bool hasTrace(const WrittenDestination& destination, const Folder& folder) {
  if (destination.isPacked && folder.status(std::string{stagingFolder})) return true;
  const auto marker = DestinationMarker::load(folder);
  const std::string own = DestinationMarker::fileName(destination.phoneHash);
  if (std::find(marker.damaged.begin(), marker.damaged.end(), own) != marker.damaged.end()) {
    throw FileError{FileOperation::read, own, EIO};
  }
  const auto* const record = marker.record(destination.phoneHash);
  return record != nullptr && record->lastTransfer >= destination.startedAt;
}

template <typename Of>
bool isFileError(const std::exception_ptr& failure, const Of& isMeant) {
  try {
    std::rethrow_exception(failure);
  } catch (const FileError& error) {
    return isMeant(error.code());
  } catch (...) {
    return false;
  }
}

bool isMissing(const std::exception_ptr& failure) {
  try {
    std::rethrow_exception(failure);
  } catch (const DestinationError& error) {
    return error.kind() == DestinationError::Kind::missing ||
           error.kind() == DestinationError::Kind::notFolder;
  } catch (...) {
    return false;
  }
}

}  // namespace

DestinationLook lookFor(const WrittenDestination& destination, const DestinationAccess& access) {
  using State = DestinationLook::State;
  const bool wasDetached =
      destination.identity && access.isVolumeAway(destination.place, *destination.identity);
  const DestinationLook absent{wasDetached ? State::away : State::gone, {}};
  try {
    const auto found = folderIdentity(destination.path);
    const auto folder = found ? access.openExisting(destination.path) : nullptr;
    if (folder == nullptr) return absent;
    // The system may still know the folder of a share whose server does not answer.
    folder->names();
    const FilesThere files = filesThere(destination, *folder);
    const bool isSame = found == destination.identity;
    const bool isKnown = (isSame && files.copied == 0) || hasTrace(destination, *folder);
    if (files.areAll && isKnown) return {State::there, found};
    const bool isOfPhone =
        folder->status(DestinationMarker::fileName(destination.phoneHash)).has_value();
    return isSame || isOfPhone ? DestinationLook{State::changed, {}} : absent;
  } catch (const FileError& error) {
    if (error.code() == EIO) return {wasDetached ? State::away : State::failing, {}};
    return meansLostVolume(error.code()) ? DestinationLook{State::away, {}} : absent;
  } catch (const std::exception&) {
    return {State::changed, {}};
  }
}

bool mayHaveLostVolume(const std::exception_ptr& failure) {
  return isMissing(failure) || isFileError(failure, [](int code) {
           return meansLostVolume(code) || code == ENOENT || code == EROFS;
         });
}

bool isDiskError(const std::exception_ptr& failure) {
  return isFileError(failure, [](int code) { return code == EIO || code == EROFS; });
}

}  // namespace tavrix
