#pragma once

#include <set>
#include <string>
#include <vector>

#include "history/RecordBuilding.h"
#include "library/Choice.h"
#include "library/Library.h"
#include "runs/FolderTransfer.h"
#include "settings/SavedPreset.h"

namespace tavrix {

/// The input and the result of a run.
struct RunRecordInput {
  const Library& library;                           ///< only the folders of the run
  const std::vector<FolderNaming::Row>& shownRows;  ///< all rows that the user could choose from
  const Settings& settings;
  const std::vector<SavedPreset>& savedPresets;
  const TransferPlan& plan;
  RunOutcome outcome;
  PhoneIdentity phone;
  std::string destinationPath;  ///< absolute
  std::string systemLocaleID;
  Language language = Language::russian;  ///< for the notes
  Uuid id;
  Instant startedAt;
  Instant finishedAt;
  PlaceNaming* placeNaming = nullptr;  ///< names the places of folders not in the run
  /// The ids of the groups that the user left out, whether displayed or not.
  std::set<std::string, std::less<>> unchecked{};
  const Choosing* choosing = nullptr;  ///< which shots the run is about; nullptr: all
  /// The record is written in advance, in case the program ends before the run does.
  bool isUnderWay = false;
};

/// Returns the record of a run. It has the shots of all its folders, including those that were
/// already in the destination, and the shots skipped as reduced copies. A skipped shot is in the
/// folder of the shots that it would have been grouped with.
TransferRecord recordOf(const RunRecordInput& run);

/// Returns a note about files that no run copies. Returns nullopt if there are none.
std::optional<std::string> unknownKindNote(Language language, const Library& library);

/// Returns notes about the files that a run wrote: those whose names the destination refused, and
/// those that are named as JPEG files but are none. Returns none if there are no such files.
std::vector<std::string> fileNotes(Language language, const TransferPlan& plan,
                                   const TransferReport& report);

/// Returns notes about the packing and about the remains of killed runs, one sentence each. Returns
/// none if all went as planned.
std::vector<std::string> packingNotes(Language language, const RunOutcome& outcome);

/// Returns what is to be noted about a run that has ended, one sentence each; `library` has its
/// folders.
std::vector<std::string> runNotes(Language language, const Library& library,
                                  const RunOutcome& outcome);

/// Returns the settings as stored in a record.
TransferRecord::Options recordOptions(const RunRecordInput& run);

}  // namespace tavrix
