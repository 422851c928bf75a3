#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "foundation/Log.h"
#include "foundation/StringMap.h"
#include "foundation/tasks/Background.h"
#include "runs/DestinationAccess.h"
#include "runs/RunRecording.h"
#include "settings/defaults/UserDefaults.h"

namespace tavrix {

/// The services that the application model needs. All of them must outlive the model.
struct ModelServices {
  MainLoop& loop;
  Background background;    ///< for grouping and building displays
  Background transferring;  ///< for copying
  Background looking;       ///< for looks at a destination that failed, which may not answer
  std::function<Instant()> now;
  std::function<Uuid()> newID;
  Log* log = &silentLog();
  Language language = Language::russian;         ///< for sentences in the state
  Language writtenLanguage = Language::russian;  ///< for reports and records
  std::string systemLocaleID = "ru_RU";
  PlaceNaming* placeNaming = nullptr;   ///< nullptr: places have no names
  MediaConverter* converter = nullptr;  ///< nullptr: files are not converted
  bool wantsReasons = false;            ///< record the reasons for the boundaries of folders
  /// True if folders and counters are displayed. A run alone needs neither them nor the content of
  /// the destination beforehand.
  bool showsFolders = true;
  /// True if the state reports before a run what stands in its way at the destination: whether the
  /// source permits it, whether it can be written to, and the findings. Requires `showsFolders`.
  bool looksAhead = false;
  /// Writes a record to the history. Returns true if the record is stored. Called in the
  /// background. Without it nothing is recorded.
  std::function<bool(TransferRecord)> keepRecord{};
  /// Returns the ids of the files of these shots that finished runs of the phone have recorded.
  /// Called in the background, only for a choice of shots since the last run.
  std::function<StringSet(const PhoneIdentity&, const std::vector<AssetBundle>&)> recordedFiles{};
  /// Returns the text for a failure in a record, for people. Without it only failures of files are
  /// described.
  std::function<std::string(const std::exception_ptr&)> failureText{};
  /// The storage of persistent choices, written on the thread of `storing`. Without it no choice is
  /// stored. In a demo nothing is written.
  UserDefaults* defaults = nullptr;
  Background storing{};
  bool isDemo = false;
  /// The state folder, in which the model uses only "groups-debug.json": the folders on screen,
  /// written after every change if `keepsGroupsDebug`, otherwise removed at launch.
  std::optional<std::string> stateFolder{};
  bool keepsGroupsDebug = false;
  /// Starts to follow the phones on the cable; not called in a demo.
  std::function<void()> watch{};
  DestinationAccess destinations{};
};

}  // namespace tavrix
