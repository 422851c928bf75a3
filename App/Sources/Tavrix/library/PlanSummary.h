#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "library/Library.h"
#include "transfer/TransferPlan.h"
#include "transfer/TransferReport.h"

namespace tavrix {

/// The part of a plan for one folder of the destination.
struct FolderPlan {
  std::string name;
  std::uint64_t newFiles = 0;
  std::uint64_t newBytes = 0;        ///< sizes on the phone, before conversion
  std::uint64_t knownFiles = 0;      ///< already in the destination
  std::uint64_t differingFiles = 0;  ///< the known files that have another size there

  friend bool operator==(const FolderPlan&, const FolderPlan&) = default;
};

/// Returns one entry per row, in row order. The plan must have been made from exactly these rows in
/// this order; otherwise the numbers are wrong.
std::vector<FolderPlan> rowPlans(const std::vector<FolderNaming::Row>& rows,
                                 const TransferPlan& plan);
/// As rowPlans(), with rows of equal names combined, in the order of the first row of each name.
std::vector<FolderPlan> folderPlans(const std::vector<FolderNaming::Row>& rows,
                                    const TransferPlan& plan);

/// The fate of every file of the catalogue after a run. The numbers add up:
/// catalogue = planned + known + leftOut.total(),
/// planned = copied + alreadyThere + keptOriginal + failed + notReached.
struct TransferTally {
  std::uint64_t catalogue = 0;
  Library::LeftOut leftOut;
  std::uint64_t known = 0;      ///< in the destination before the run, therefore not planned
  std::uint64_t differing = 0;  ///< the known files that have another size there
  std::uint64_t planned = 0;
  std::uint64_t plannedBytes = 0;  ///< sizes on the phone, before conversion
  std::uint64_t copied = 0;        ///< written as planned
  std::uint64_t alreadyThere = 0;  ///< planned, but found complete and not written again
  std::uint64_t keptOriginal = 0;  ///< written unconverted, because the conversion failed
  std::uint64_t failed = 0;
  std::uint64_t notReached = 0;  ///< the run ended first

  friend bool operator==(const TransferTally&, const TransferTally&) = default;
};

/// Counts the outcomes of a run. `plan` must have been made from `library.rows`, and `report` from
/// `plan`. With an empty report every planned file is not reached.
TransferTally tallyOf(const Library& library, const TransferPlan& plan,
                      const TransferReport& report);

}  // namespace tavrix
