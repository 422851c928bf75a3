#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "media/AssetBundle.h"
#include "transfer/DifferingFiles.h"
#include "transfer/KnownAssets.h"

namespace tavrix {

/// The processing of a file between fetching and its final place.
namespace planned_conversion {
struct Jpeg {
  double quality = 0.85;
  friend bool operator==(const Jpeg&, const Jpeg&) = default;
};
struct None {
  friend bool operator==(const None&, const None&) = default;
};
struct H264 {
  friend bool operator==(const H264&, const H264&) = default;
};
}  // namespace planned_conversion

using PlannedConversion =
    std::variant<planned_conversion::None, planned_conversion::Jpeg, planned_conversion::H264>;

/// Returns "none", "jpeg" or "h264".
std::string_view textOf(const PlannedConversion& conversion);
inline bool isConverted(const PlannedConversion& conversion) {
  return !std::holds_alternative<planned_conversion::None>(conversion);
}

/// A file of the phone that is looked up in a destination. The assets must outlive it.
struct WantedFile {
  const MediaAsset& asset;
  const MediaAsset& lead;  ///< the file whose date represents the shot, see leadOf()
  PlannedConversion conversion{};
};

/// One file to write.
struct PlannedFile {
  MediaAsset asset;
  std::string relativePath;  ///< under the destination, "/" between parts
  PlannedConversion conversion;
  bool isPicture = false;  ///< a picture of its shot; sidecars and motion parts are not
  AssetBundle bundle;      ///< its shot

  const std::string& bundleID() const { return bundle.id(); }
  WantedFile wanted() const { return {asset, leadOf(bundle), conversion}; }

  friend bool operator==(const PlannedFile&, const PlannedFile&) = default;
};

struct TransferPlan {
  std::vector<PlannedFile> files;        ///< in order of writing
  std::vector<MediaAsset> skippedKnown;  ///< already in the destination, in plan order
  std::vector<std::string> knownPaths;   ///< the destination path of each of `skippedKnown`
  bool onlyNew = true;
  /// In plan order. The emptied ones are for files of `files`, all others are in `knownPaths`.
  std::vector<DifferingFile> differing{};

  /// Returns the sum of the sizes of `files` on the phone.
  std::uint64_t totalBytes() const;

  friend bool operator==(const TransferPlan&, const TransferPlan&) = default;
};

}  // namespace tavrix
