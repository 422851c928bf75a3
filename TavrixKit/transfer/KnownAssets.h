#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "foundation/StringMap.h"
#include "media/AssetBundle.h"
#include "media/MediaAsset.h"

namespace tavrix {

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

/// Returns true if a shot was taken at another moment than the recorded one. The date of a camera's
/// clock never changes. A file's modification date can shift by whole quarters of an hour if the
/// volume stores local time, and so can an instant that was derived from clock time. Dates of
/// different kinds are not compared: a picture that could once not be read has only its file's
/// date.
bool isAnotherShot(const std::optional<ShotDate>& date, const std::optional<ShotDate>& recorded);

/// The paths of one phone's assets in a destination, as its record names them. The texts are those
/// of the marker, which must outlive it.
struct KnownAssets {
  struct Record {
    const std::string* path = nullptr;  ///< relative to the destination
    std::uint64_t size = 0;             ///< bytes on disk; 0 if the file was never seen there
    std::optional<ShotDate> date{};     ///< if it was recorded
  };

  StringViewMap<Record> byLocalID;  ///< the last record of each id
  StringViewMap<Record> byCloudID;
  /// For ids copied under several names or into several folders: all records except the last.
  StringViewMap<std::vector<Record>> earlier;

  /// Returns the record with the asset's id, or else with its cloud id; nullptr if there is none.
  const Record* record(const MediaAsset& asset) const;
};

}  // namespace tavrix
