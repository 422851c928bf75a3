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

/// The files of one archive and their current locations.
struct ArchiveContent {
  std::vector<ZipEntry> entries;
  std::vector<std::string> paths;  ///< in the destination, one per entry

  /// Returns the size of the finished archive.
  std::uint64_t archiveBytes() const;
};

/// Creates archives in a destination. An archive gets its name only after it was read back
/// completely and is on stable storage. Until then it is a ".part" file in the staging folder.
class ArchivePacker {
 public:
  /// Thrown if a stop was requested.
  struct Stopped {};
  /// Called for each piece that was packed or read back, so each archive's content is reported
  /// twice.
  using Processed = std::function<void(std::uint64_t bytes)>;

  ArchivePacker(Folder& destination, TimeZone zone, std::stop_token stop);

  /// Packs files into an archive of that name, or of the first numbered variant that is free.
  /// Returns the record for the destination marker. Leaves nothing behind on failure. Throws
  /// FileError, ZipError and Stopped.
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
