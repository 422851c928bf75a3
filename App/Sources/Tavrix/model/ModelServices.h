#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Destination.h"
#include "RunRecording.h"
#include "defaults/UserDefaults.h"
#include "foundation/Log.h"
#include "model/Background.h"

namespace tavrix {

/// What the application model needs of the world around it; all of it outlives the model.
struct ModelServices {
  using OpenFolder = std::function<std::unique_ptr<Folder>(const std::string&)>;

  MainLoop& loop;
  Background background;    ///< groups and builds displays
  Background transferring;  ///< copies
  std::function<Instant()> now;
  std::function<Uuid()> newID;
  Log* log = &silentLog();
  Language language = Language::russian;         ///< of sentences in the state
  Language writtenLanguage = Language::russian;  ///< of reports and records
  std::string systemLocaleID = "ru_RU";
  PlaceNaming* placeNaming = nullptr;   ///< without one places have no names
  MediaConverter* converter = nullptr;  ///< without one files are kept as they are
  bool wantsReasons = false;            ///< whether to tell why folders were cut where they were
  /// Whether anybody looks at folders and counters; a run alone needs neither them nor what lies
  /// at the destination before it begins.
  bool showsFolders = true;
  /// Writes a record of the history; whether it is there now. Called in the background. Without
  /// one nothing is recorded.
  std::function<bool(TransferRecord)> keepRecord{};
  /// What a failure is called in a record, for people; without one only failures of files are.
  std::function<std::string(const std::exception_ptr&)> failureText{};
  /// Where choices are kept that outlive the program, and written on a thread of its own; without
  /// one they are kept nowhere. In a demo nothing is written.
  UserDefaults* defaults = nullptr;
  Background storing{};
  bool isDemo = false;
  /// The state folder, of which the model knows "groups-debug.json" alone: the folders on screen,
  /// written whenever they change if that is wanted, otherwise removed at launch.
  std::optional<std::string> stateFolder{};
  bool keepsGroupsDebug = false;
  /// Begins to follow the phones on the cable; not called in a demo.
  std::function<void()> watch{};
  /// Open the folders of destinations, as those of the same names do.
  OpenFolder openForWriting = Destination::openForWriting;
  OpenFolder openExisting = Destination::openExisting;
};

}  // namespace tavrix
