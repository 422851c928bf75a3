#include "runs/DestinationReturn.h"

#include <cerrno>

#include "foundation/files/FileError.h"

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
  const auto fileAt = [&](const std::string& path) {
    const auto status = folder.status(path);
    return status && status->type == FileStatus::Type::file ? status : std::nullopt;
  };
  for (const FileOutcome& file : destination.report->files) {
    if (!file.path) continue;
    const auto archive = destination.isPacked ? archiveOf(*file.path) : std::nullopt;
    const auto status = fileAt(archive.value_or(*file.path));
    // An archive got its name after it was synced.
    const bool isWhole = status && (archive || status->size == file.bytesOnDisk);
    there.areAll = there.areAll && isWhole;
    if (!file.is<FileOutcome::AlreadyThere>()) ++there.copied;
  }
  for (const std::string& known : destination.plan->knownPaths) {
    if (!there.areAll) break;
    there.areAll = fileAt(known).has_value();
  }
  return there;
}

}  // namespace

DestinationLook lookFor(const WrittenDestination& destination, const DestinationAccess& access) {
  using State = DestinationLook::State;
  const DestinationLook gone;
  const DestinationLook away{State::away, {}};
  const bool wasDetached =
      destination.identity && access.isVolumeAway(destination.place, *destination.identity);
  const DestinationLook absent = wasDetached ? away : gone;
  try {
    const auto found = folderIdentity(destination.path);
    const auto folder = found ? access.openExisting(destination.path) : nullptr;
    if (folder == nullptr) return absent;
    // The system may still know the folder of a share whose server does not answer.
    folder->names();
    const FilesThere files = filesThere(destination, *folder);
    const bool isSame = found == destination.identity;
    // The last files may have been lost with the volume; then the next run copies them again.
    if (files.areAll && (isSame || (wasDetached && files.copied > 0))) return {State::there, found};
    if (isSame || folder->status(destination.markerName)) return gone;
  } catch (const FileError& error) {
    if (meansLostVolume(error.code()) && error.code() != EIO) return away;
  } catch (const std::exception&) {
    return gone;
  }
  return absent;
}

bool mayHaveLostVolume(const std::exception_ptr& failure) {
  try {
    std::rethrow_exception(failure);
  } catch (const FileError& error) {
    return meansLostVolume(error.code()) || error.code() == ENOENT;
  } catch (const DestinationError& error) {
    return error.kind() == DestinationError::Kind::missing ||
           error.kind() == DestinationError::Kind::notFolder;
  } catch (...) {
    return false;
  }
}

}  // namespace tavrix
