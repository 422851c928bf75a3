#pragma once

#include <memory>
#include <string>
#include <vector>

#include "library/PlaceNaming.h"
#include "settings/Settings.h"
#include "transfer/DestinationView.h"
#include "transfer/TransferPlanner.h"

namespace tavrix {

/// The input of continuedFolders() besides the rows.
struct ContinuationContext {
  Shared<Settings> settings;
  TransferOptions options;
  std::string systemLocaleID;
  PlaceNaming* naming = nullptr;  ///< nullptr: places have no names
};

/// Returns the rows as they are transferred to a destination: a group that got more shots goes on
/// in the folder that it has there. Archives, the layout without folders, an empty destination and
/// the setting `continueFolders` turned off leave the rows as they are. Blocks while the names of
/// places are looked up. May be called from any thread.
std::vector<TransferPlanner::NamedGroup> continuedFolders(
    const std::vector<FolderNaming::Row>& rows, const ContinuationContext& context,
    const DestinationView& destination);

/// Returns the rows with the names of the folders.
std::vector<FolderNaming::Row> rowsOf(const std::vector<TransferPlanner::NamedGroup>& folders);

/// Returns how the names of the folders were made, for the record of the destination. Folders that
/// the user has named or merged are not listed, because their names do not depend on the settings.
std::vector<DestinationMarker::FolderNote> notesOf(
    const std::vector<TransferPlanner::NamedGroup>& folders, const ContinuationContext& context);

}  // namespace tavrix
