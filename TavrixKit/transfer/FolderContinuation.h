#pragma once

#include <functional>
#include <string>
#include <vector>

#include "naming/FolderNaming.h"
#include "transfer/DestinationView.h"
#include "transfer/TransferOptions.h"
#include "transfer/TransferPlanner.h"

namespace tavrix {

/// Lets groups that got more shots go on in the folders that they have at the destination, under
/// the names of these folders. Pure functions.
namespace FolderContinuation {

/// How the names of a list of rows were made.
struct Names {
  Shared<DestinationMarker::FolderMaking> making;
  /// Groups of equal names share one folder.
  bool isShared = false;
  ShotClock clock{};  ///< of the days in names
  /// Returns true if the user has given this group its name, or merged it.
  std::function<bool(const MediaGroup&)> isByHand;
  /// Returns the name of a group with the present settings, before equal names are numbered. Called
  /// only for folders whose making is not recorded.
  std::function<std::string(const MediaGroup&)> nameOf;
};

/// Returns one folder per row, in the order of the rows.
///
/// A folder of the destination is of the same making if it is recorded with an equal making, or if
/// it is recorded with none and `nameOf` gives its name for the shots that are recorded in it. A
/// row continues such a folder if more than half of its recorded shots on disk are in it. If
/// several rows would continue one folder, the row with most of its shots does, the first of them
/// if they are equal. All other rows keep their names, numbered if such a name is now taken.
/// `alsoIn` of each row lists the other folders of the same making that hold shots of it. Rows
/// whose names were made by hand are left as they are.
std::vector<TransferPlanner::NamedGroup> folders(const std::vector<FolderNaming::Row>& rows,
                                                 const Names& names, const TransferOptions& options,
                                                 const DestinationView& destination);

}  // namespace FolderContinuation

}  // namespace tavrix
