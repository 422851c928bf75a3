#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "settings/Settings.h"
#include "transfer/TransferPlan.h"

namespace tavrix {

/// How a run packs its files.
struct Packing {
  bool isPerGroup = false;  ///< one archive per folder instead of one for all files
  bool isFlat = false;      ///< the files are not in folders, so there is one archive
  std::string wholeName;    ///< name of the archive of all files, without ".zip"

  friend bool operator==(const Packing&, const Packing&) = default;
};

/// Returns how the settings pack the files of a run that starts on `today`. Returns nullopt for
/// plain folders.
std::optional<Packing> packingOf(const Settings& settings, const std::string& deviceName,
                                 CivilDate today);

/// An archive that a run will create.
struct PlannedArchive {
  std::optional<std::string> group;  ///< the folder in it; nullopt if it contains all
  std::string name;                  ///< file name, unless already taken
  std::vector<std::size_t> files;    ///< indices into the plan, in plan order

  friend bool operator==(const PlannedArchive&, const PlannedArchive&) = default;
};

/// Returns the archives of a plan in the order of their first files. Every file is in exactly one
/// archive.
std::vector<PlannedArchive> plannedArchives(const TransferPlan& plan, const Packing& packing);

/// Returns the names of files within one archive, given their paths in the destination. A path
/// stays as it is, unless some unpacking program could take it for a path to another place or cut
/// it off. In that case each character forbidden in folder names becomes "-", and a number keeps
/// the name unique.
std::vector<std::string> entryNames(std::vector<std::string> paths);

}  // namespace tavrix
