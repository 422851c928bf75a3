#pragma once

#include <cstdint>
#include <functional>
#include <stop_token>
#include <string>
#include <vector>

#include "archives/ZipEntry.h"
#include "foundation/TimeZone.h"
#include "foundation/files/Folder.h"
#include "transfer/DestinationMarker.h"

namespace tavrix {

/// The files of one archive, with where each is now.
struct ArchiveContent {
  std::vector<ZipEntry> entries;
  std::vector<std::string> paths;  ///< in the destination, one for each entry

  /// Of the finished archive.
  std::uint64_t archiveBytes() const;
};

/// Makes archives in a destination. An archive has its name only when it was read back whole and is
/// on stable storage; until then it is a ".part" file in the staging folder.
class ArchivePacker {
 public:
  /// Thrown when the run is to stop.
  struct Stopped {};
  /// Told of each piece that was packed or read back: every archive's content counts twice.
  using Processed = std::function<void(std::uint64_t bytes)>;

  ArchivePacker(Folder& destination, TimeZone zone, std::stop_token stop);

  /// Packs files into the archive of that name, or the first number of it that is free. Gives what
  /// the destination is to remember of it. On failure nothing is left of it. Throws FileError,
  /// ZipError and Stopped.
  DestinationMarker::FileRecord pack(const std::string& name, const ArchiveContent& content,
                                     const Processed& processed);

 private:
  void pack(const std::string& name, const std::string& part, const ArchiveContent& content,
            DestinationMarker::FileRecord& record, const Processed& processed);
  void checkStop() const;

  Folder& destination_;
  TimeZone zone_;
  std::stop_token stop_;
};

}  // namespace tavrix
