#include "transfer/FileLanding.h"

#include <array>
#include <cerrno>

#include "foundation/Text.h"
#include "transfer/FileNames.h"
#include "transfer/SafeNames.h"

namespace tavrix {

bool FileLanding::giveName(ReadyFile& ready, std::string& path) {
  if (run_.setup_.replacement) {
    path = ready.target;
    takePlace(ready);
    return false;
  }
  try {
    return giveFreeName(ready, path);
  } catch (const FileError& error) {
    // Some volumes accept the temporary name but not the final one.
    const std::string safe = SafeNames::safePath(ready.target);
    if (!SafeNames::isRefusal(error, ready.target) || safe == ready.target) throw;
    ready.target = safe;
    ready.hasSafeName = true;
  }
  return giveFreeName(ready, path);
}

bool FileLanding::giveFreeName(const ReadyFile& ready, std::string& path) {
  // The name of a kept original may differ from its planned name only in letter case.
  const bool isPlannedTarget = caseFolded(ready.target) == caseFolded(planned(ready).relativePath);
  const auto isPlanned = [&](const std::string& other) { return run_.isPlanned(other); };
  const std::uint64_t first =
      ready.hasSafeName ? run_.safeNumbers_.numberOf(planned(ready), isPlanned) : 1;
  for (std::uint64_t number = 1;; ++number) {
    path = numberedPath(ready.target, number);
    // The name is planned for another file of this run, whether that has landed or not.
    if ((number > 1 || !isPlannedTarget) && run_.isPlanned(path)) continue;
    const bool isOffered = number >= first;
    if (isOffered && run_.destination_.renameWithoutReplacing(ready.part, path)) return false;
    if (!hasSameBytes(path, ready)) continue;
    removeQuietly(run_.destination_, ready.part);
    return true;
  }
}

void FileLanding::takePlace(const ReadyFile& ready) {
  Folder& destination = run_.destination_;
  if (destination.renameWithoutReplacing(ready.part, ready.target)) return;
  const auto status = destination.status(ready.target);
  if (status && status->type != FileStatus::Type::file) {
    throw FileError{FileOperation::rename, ready.target, EEXIST};
  }
  const std::string aside = setAside(ready.target);
  try {
    if (!destination.renameWithoutReplacing(ready.part, ready.target)) {
      throw FileError{FileOperation::rename, ready.target, EEXIST};
    }
  } catch (...) {
    renameBackQuietly(aside, ready.target);
    throw;
  }
  run_.setup_.replacement->setAside(planned(ready), aside);
}

std::string FileLanding::setAside(const std::string& path) {
  for (std::uint64_t number = 1;; ++number) {
    std::string aside = damagedPath(path, number);
    // A name that the record may give to another file of this run stays free for it.
    if (run_.isPlanned(aside)) continue;
    if (run_.destination_.renameWithoutReplacing(path, aside)) return aside;
  }
}

void FileLanding::renameBackQuietly(const std::string& aside, const std::string& path) noexcept {
  try {
    run_.destination_.renameWithoutReplacing(aside, path);
  } catch (...) {
    // Its bytes stay under the other name.
  }
}

bool FileLanding::hasSameBytes(const std::string& path, const ReadyFile& ready) {
  const auto status = run_.destination_.status(path);
  return status && status->type == FileStatus::Type::file && status->size == ready.size &&
         digestOf(path) == ready.sha256;
}

std::string FileLanding::digestOf(const std::string& path) {
  const auto file = run_.destination_.openFile(path);
  std::array<char, 65536> buffer;
  digest_.restart();
  for (std::size_t count = 0; (count = file->read(buffer)) > 0;) {
    digest_.add(std::as_bytes(std::span{buffer}.first(count)));
  }
  return digest_.finish();
}

void removeQuietly(Folder& destination, const std::string& path) noexcept {
  try {
    destination.removeFile(path);
  } catch (...) {
    // A file that cannot be removed now is replaced by the next run.
  }
}

}  // namespace tavrix
