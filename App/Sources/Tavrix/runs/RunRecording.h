#pragma once

#include <set>
#include <string>
#include <vector>

#include "Library.h"
#include "SavedPreset.h"
#include "TransferJob.h"
#include "history/RecordBuilding.h"

namespace tavrix {

/// What a finished run was made of and what came of it.
struct RunToRecord {
  const Library& library;                           ///< with the folders of the run alone
  const std::vector<FolderNaming::Row>& shownRows;  ///< all that the person could choose from
  const Settings& settings;
  const std::vector<SavedPreset>& savedPresets;
  const TransferPlan& plan;
  TransferOutcome outcome;
  PhoneIdentity phone;
  std::string destinationPath;  ///< absolute
  std::string systemLocaleID;
  Language language = Language::russian;  ///< of the notes
  Uuid id;
  Instant startedAt;
  Instant finishedAt;
  PlaceNaming* placeNaming = nullptr;  ///< names the places of folders that the run left out
  /// Groups that the person left out, by id, whether they are shown or not.
  std::set<std::string, std::less<>> unchecked{};
  /// The record is written ahead, in case the program does not live to the end of the run.
  bool isUnderWay = false;
};

/// The record of a run: the shots of all folders, whatever of them was there before, and those that
/// were left out as reduced copies, in the folders of the shots that they would have been with.
TransferRecord recordOf(const RunToRecord& run);

/// What a person should know of files that no run takes; nothing when there are none.
std::optional<std::string> unknownKindNote(Language language, const Library& library);

/// What a person should know of the packing, one sentence each; none when all went as planned.
std::vector<std::string> packingNotes(Language language, const TransferOutcome& outcome);

/// The settings as a record keeps them.
TransferRecord::Options recordOptions(const RunToRecord& run);

}  // namespace tavrix
