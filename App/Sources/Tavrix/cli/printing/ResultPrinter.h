#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/printing/SettingDescription.h"
#include "foundation/json/JsonValue.h"
#include "grouping/PlaceTree.h"
#include "history/HistoryStore.h"
#include "library/Library.h"
#include "library/PlanSummary.h"
#include "naming/NamePresets.h"
#include "runs/ArchivePlan.h"
#include "runs/FolderTransfer.h"
#include "runs/RepairRun.h"
#include "settings/SavedPreset.h"
#include "transfer/CopyVerification.h"
#include "transfer/MarkerRebuild.h"
#include "transfer/TransferPlan.h"

namespace tavrix::cli {

/// The places of a library and, if they have names, their tree in the language of the call.
struct PlacesResult {
  std::vector<LibraryPlace> places;
  std::optional<PlaceTree> tree;
};

/// The folders of a library.
struct GroupsResult {
  Library library;
  bool isFlat = false;  ///< the files are directly in the destination
  /// The source is a folder: a copy may have changed the dates of its files.
  bool isFolder = false;
  bool explainsShots = false;             ///< every shot outside trips is listed with its reason
  std::optional<std::size_t> accepted{};  ///< suggestions accepted in this call, if it accepts any
  /// The name that the first month or year would have with `wholeFolderDates`, and the one that it
  /// has; nullopt if no name would change.
  std::optional<std::pair<std::string, std::string>> shorterDate{};
};

/// A plan and the library it was made from.
struct PlanResult {
  const Library& library;
  const TransferPlan& plan;
  std::string destination;
  bool isFlat = false;  ///< the files are directly in the destination
  /// Bytes available in the destination; nullopt if it does not exist yet.
  std::optional<std::uint64_t> freeBytes;
  std::uint64_t neededBytes = 0;           ///< the most needed at any one time
  std::vector<PlannedArchive> archives{};  ///< empty if the run packs nothing
  bool listsFiles = false;                 ///< every file is listed, not the folders alone
};

/// A run, with its library and plan.
struct TransferResult {
  const Library& library;
  const TransferPlan& plan;
  std::string destination;
  const RunOutcome& outcome;
  std::optional<Uuid> recordID{};  ///< of the record in the history
};

/// A check of a destination, and the checksum list that it wrote, if any.
struct VerificationResult {
  struct Checksums {
    std::string path;
    std::uint64_t files = 0;
    std::uint64_t withoutRecord = 0;  ///< files with no digest in any record or earlier list
  };

  const CopyVerification::Report& report;
  std::string destination;
  std::optional<Checksums> checksums;
};

/// The copies recognised in a destination.
struct RebuildResult {
  const MarkerRebuild::Report& report;
  std::string phone;       ///< the name of the phone
  bool hasRecord = false;  ///< the destination already had a record of the phone
};

/// A persistent setting of the user.
struct KeptSetting {
  std::string key;
  std::optional<JsonValue> value{};  ///< as in the settings; nullopt if it has no value
  bool isInitial = true;             ///< the user has not changed it
};

/// A topic of `tavrix help`: a command or the program, a setting, or a word that is both.
struct HelpTopic {
  struct Texts {
    std::string russian;
    std::string english;
  };

  std::optional<Texts> texts{};  ///< the help of a command or of the program
  std::optional<SettingDescription> setting{};
};

/// Prints the result of a command, for people or for programs.
class ResultPrinter {
 public:
  virtual ~ResultPrinter() = default;

  virtual void catalog(const std::vector<MediaAsset>& assets) = 0;
  virtual void bundles(const std::vector<AssetBundle>& bundles) = 0;
  virtual void groups(const GroupsResult& result) = 0;
  virtual void places(const PlacesResult& result) = 0;
  virtual void plan(const PlanResult& result) = 0;
  virtual void transfer(const TransferResult& result) = 0;
  /// Prints runs, newest first. `isWhole` is true if the user did not restrict them.
  virtual void runs(const std::vector<RecordSummary>& runs, bool isWhole) = 0;
  /// Prints what each run did with one file.
  virtual void fileRuns(const std::vector<HistoryStore::FileRun>& runs) = 0;
  virtual void record(const TransferRecord& record) = 0;
  virtual void recordDeleted(const Uuid& id) = 0;
  virtual void verification(const VerificationResult& result) = 0;
  virtual void repaired(const RepairOutcome& outcome) = 0;
  virtual void rebuilt(const RebuildResult& result) = 0;
  /// `hadAny` is true if names of places were stored before.
  virtual void placeNamesReset(bool hadAny) = 0;
  virtual void thumbnailsWritten(std::uint64_t written, std::uint64_t failed) = 0;
  /// The window is about to replace this program.
  virtual void windowStarts(const std::string& program,
                            const std::vector<std::string>& arguments) = 0;
  virtual void snapshotWritten(const std::string& path, std::uint64_t items) = 0;
  /// Prints a folder name.
  virtual void name(const std::string& name) = 0;
  /// Prints the built-in name templates. For people, with what each gives on a machine of this
  /// locale.
  virtual void presets(const std::vector<NamePresets::Builtin>& presets,
                       const std::string& systemLocaleID) = 0;
  virtual void settings(const std::vector<KeptSetting>& settings) = 0;
  /// Explains all settings.
  virtual void allSettings(const std::vector<SettingDescription>& settings) = 0;
  virtual void help(const HelpTopic& topic) = 0;
  /// As presets(), for built-in and saved name templates.
  virtual void templates(const std::vector<NamePresets::Builtin>& builtins,
                         const std::vector<SavedPreset>& saved,
                         const std::string& systemLocaleID) = 0;
  /// `saved` are all saved templates, `changed` among them.
  virtual void templateSaved(const std::vector<NamePresets::Builtin>& builtins,
                             const std::vector<SavedPreset>& saved, const SavedPreset& changed,
                             const std::string& systemLocaleID) = 0;
  virtual void templateDeleted(const std::string& name) = 0;
  virtual void templatesForgotten(const std::vector<NamePresets::Builtin>& builtins) = 0;
};

}  // namespace tavrix::cli
