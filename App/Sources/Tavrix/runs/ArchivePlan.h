#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "Settings.h"
#include "transfer/TransferPlan.h"

namespace tavrix {

/// How a run packs its files.
struct Packing {
  bool isPerGroup = false;  ///< an archive for each folder instead of one for all
  bool isFlat = false;      ///< the files lie in no folders, so that there is one archive
  std::string wholeName;    ///< of the archive of all files, without ".zip"

  friend bool operator==(const Packing&, const Packing&) = default;
};

/// How the settings want the files of a run packed that begins on a day; nothing for plain folders.
std::optional<Packing> packingOf(const Settings& settings, const std::string& deviceName,
                                 CivilDate today);

/// An archive that a run is to make.
struct PlannedArchive {
  std::optional<std::string> group;  ///< the folder that it holds; nothing when it holds all
  std::string name;                  ///< its file name, unless that is taken
  std::vector<std::size_t> files;    ///< indices into the plan, in plan order

  friend bool operator==(const PlannedArchive&, const PlannedArchive&) = default;
};

/// The archives of a plan, in the order in which the plan comes upon them. Every file is in exactly
/// one.
std::vector<PlannedArchive> plannedArchives(const TransferPlan& plan, const Packing& packing);

/// What files of one archive are called in it, by their paths in the destination: so, unless a part
/// could lead elsewhere or break off when some program unpacks it. In such a one each character
/// that folder names may not have becomes "-", and a number tells it from the others.
std::vector<std::string> entryNames(std::vector<std::string> paths);

}  // namespace tavrix
