#pragma once

#include <cstdint>
#include <string>

#include "foundation/Digest.h"
#include "transfer/PlanExecution.h"

namespace tavrix {

/// Gives the files of a run that are ready their names in the destination. For one thread.
class FileLanding {
 public:
  FileLanding(PlanExecution& run, Sha256& digest) : run_(run), digest_(digest) {}

  /// Renames to the first free name, of the safe form if the volume refuses the name; in a repair,
  /// to the planned name exactly. Sets `path` to the name. Returns true if a file with the same
  /// bytes already has that name. Throws FileError.
  bool giveName(ReadyFile& ready, std::string& path);
  /// Returns the SHA-256 of a file of the destination. Throws FileError.
  std::string digestOf(const std::string& path);

 private:
  bool giveFreeName(const ReadyFile& ready, std::string& path);
  /// Renames to the planned path exactly, after setting aside a file that is in the way. If that
  /// fails, the file that was set aside gets its name back. Throws FileError.
  void takePlace(const ReadyFile& ready);
  /// Renames a file to the first free name for damaged files. Returns that name.
  std::string setAside(const std::string& path);
  void renameBackQuietly(const std::string& aside, const std::string& path) noexcept;
  bool hasSameBytes(const std::string& path, const ReadyFile& ready);
  const PlannedFile& planned(const ReadyFile& ready) const { return run_.plan_.files[ready.index]; }

  PlanExecution& run_;
  Sha256& digest_;
};

/// Removes a temporary file of a run. A file that cannot be removed now is replaced by the next
/// run.
void removeQuietly(Folder& destination, const std::string& path) noexcept;

}  // namespace tavrix
