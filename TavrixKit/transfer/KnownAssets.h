#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "foundation/StringMap.h"
#include "media/AssetBundle.h"
#include "media/MediaAsset.h"

namespace tavrix {

struct FileOnDisk {
  std::uint64_t size = 0;  ///< bytes
  Instant modified;

  friend bool operator==(const FileOnDisk&, const FileOnDisk&) = default;
};

/// The regular files of a destination by relative path.
using FilesOnDisk = StringMap<FileOnDisk>;

/// When a shot was taken, as far as its files tell.
struct ShotDate {
  Instant at;
  bool isOwn = false;  ///< what the camera's clock showed; else when the file was last written
  /// Noted by an earlier version: in UTC, and of whichever kind.
  bool isOfEarlierForm = false;

  friend bool operator==(const ShotDate&, const ShotDate&) = default;
};

/// The file whose date stands for all of a bundle: its original, or the first picture where that is
/// gone.
const MediaAsset& leadOf(const AssetBundle& bundle);
/// The date by which a file is told from another of its id: a picture's own, and of what
/// accompanies one (`lead`) that one's. Nothing when there is none.
std::optional<ShotDate> shotDate(const MediaAsset& asset, const MediaAsset& lead);
/// The same as it is recorded: of a source with a serial number its files' dates tell nothing,
/// because phones list them as they like.
std::optional<ShotDate> recordedDate(const MediaAsset& asset, const MediaAsset& lead,
                                     bool hasSerialNumber);

/// Where the assets of one phone landed in a destination, as its record remembers.
struct KnownAssets {
  struct Record {
    std::string path;  ///< relative to the destination
    std::uint64_t size = 0;
    std::optional<ShotDate> date{};  ///< where it was recorded

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
