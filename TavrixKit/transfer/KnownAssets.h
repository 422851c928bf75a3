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

/// The date of a shot, as far as its files have one.
struct ShotDate {
  Instant at;
  bool isOwn = false;  ///< the date of the camera's clock; else the file's modification date
  /// Recorded by an earlier version: in UTC, and of either kind.
  bool isOfEarlierForm = false;

  friend bool operator==(const ShotDate&, const ShotDate&) = default;
};

/// Returns the file whose date represents the whole bundle: its original, or its first picture if
/// the original is missing.
const MediaAsset& leadOf(const AssetBundle& bundle);
/// Returns the date that distinguishes a file from another one of the same id: a picture's own
/// date, and for a file that accompanies a picture the date of `lead`. Returns nullopt if there is
/// none.
std::optional<ShotDate> shotDate(const MediaAsset& asset, const MediaAsset& lead);
/// As shotDate(), as it is recorded. Returns nullopt for a modification date of a source with a
/// serial number, because phones list those dates unreliably.
std::optional<ShotDate> recordedDate(const MediaAsset& asset, const MediaAsset& lead,
                                     bool hasSerialNumber);

/// The paths of one phone's assets in a destination, as its record names them.
struct KnownAssets {
  struct Record {
    std::string path;  ///< relative to the destination
    std::uint64_t size = 0;
    std::optional<ShotDate> date{};  ///< if it was recorded

    friend bool operator==(const Record&, const Record&) = default;
  };

  StringMap<Record> byLocalID;
  StringMap<Record> byCloudID;

  /// Returns the record with the asset's id, or else with its cloud id; nullptr if there is none.
  const Record* record(const MediaAsset& asset) const;

  friend bool operator==(const KnownAssets&, const KnownAssets&) = default;
};

/// Returns true if the recorded path is on disk. The folder is the truth: other records are
/// ignored.
bool isOnDisk(const KnownAssets::Record& record, const FilesOnDisk& filesOnDisk);

}  // namespace tavrix
