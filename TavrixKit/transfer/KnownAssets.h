#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "foundation/StringMap.h"
#include "media/MediaAsset.h"

namespace tavrix {

struct FileOnDisk {
  std::uint64_t size = 0;  ///< bytes
  Instant modified;

  friend bool operator==(const FileOnDisk&, const FileOnDisk&) = default;
};

/// The regular files of a destination by relative path.
using FilesOnDisk = StringMap<FileOnDisk>;

/// Where the assets of one phone landed in a destination, as its record remembers.
struct KnownAssets {
  struct Record {
    std::string path;  ///< relative to the destination
    std::uint64_t size = 0;
    /// When the picture was taken, where several sources may give one id to several pictures.
    std::optional<Instant> captured{};

    friend bool operator==(const Record&, const Record&) = default;
  };

  StringMap<Record> byLocalID;
  StringMap<Record> byCloudID;

  /// The record of an asset: by its id, else by its cloud id; null when there is none.
  const Record* record(const MediaAsset& asset) const;

  friend bool operator==(const KnownAssets&, const KnownAssets&) = default;
};

/// The folder is the truth: a record counts only while its path is on disk.
bool isOnDisk(const KnownAssets::Record& record, const FilesOnDisk& filesOnDisk);

}  // namespace tavrix
