#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Library.h"
#include "PlanSummary.h"
#include "SavedPreset.h"
#include "TransferJob.h"
#include "foundation/json/JsonValue.h"
#include "grouping/PlaceTree.h"
#include "history/HistoryStore.h"
#include "naming/NamePresets.h"
#include "transfer/CopyVerification.h"
#include "transfer/MarkerRebuild.h"
#include "transfer/TransferPlan.h"

namespace tavrix::cli {

/// The places of a library, and their tree in the language of the call where places have names.
struct PlacesResult {
  std::vector<LibraryPlace> places;
  std::optional<PlaceTree> tree;
};

/// A plan with what it was made from.
struct PlanResult {
  const Library& library;
  const TransferPlan& plan;
  std::string destination;
  bool isFlat = false;  ///< the files lie right in the destination
  /// Bytes that the destination can take; nothing when it does not exist yet.
  std::optional<std::uint64_t> freeBytes;
  std::uint64_t neededBytes = 0;  ///< that it must take at most at one time
};

/// A run with what it was made from.
struct TransferResult {
  const Library& library;
  const TransferPlan& plan;
  std::string destination;
  const TransferOutcome& outcome;
  std::optional<Uuid> recordID{};  ///< of its record in the history
};

/// A check of a destination, and the list of checksums that it wrote, if any.
struct VerificationResult {
  struct Checksums {
    std::string path;
    std::uint64_t files = 0;
    std::uint64_t withoutRecord = 0;  ///< of them, whose digest no record and no earlier list knew
  };

  const CopyVerification::Report& report;
  std::string destination;
  std::optional<Checksums> checksums;
};

/// What was recognised in a destination.
struct RebuildResult {
  const MarkerRebuild::Report& report;
  std::string phone;       ///< its name
  bool hasRecord = false;  ///< the destination held one of the phone before
};

/// A setting that the program keeps for the person.
struct KeptSetting {
  std::string key;
  std::optional<JsonValue> value{};  ///< as the settings hold it; nothing for what is not given
  bool isInitial = true;             ///< nobody has set it
};

/// Writes the result of a command: for people, or for programs.
class ResultPrinter {
 public:
  virtual ~ResultPrinter() = default;

  virtual void catalog(const std::vector<MediaAsset>& assets) = 0;
  virtual void bundles(const std::vector<AssetBundle>& bundles) = 0;
  virtual void groups(const Library& library) = 0;
  virtual void places(const PlacesResult& result) = 0;
  virtual void plan(const PlanResult& result) = 0;
  virtual void transfer(const TransferResult& result) = 0;
  /// Runs, newest first; `isWhole` when nothing was asked of them.
  virtual void runs(const std::vector<RunSummary>& runs, bool isWhole) = 0;
  /// What runs did with one file.
  virtual void fileRuns(const std::vector<HistoryStore::FileRun>& runs) = 0;
  virtual void record(const TransferRecord& record) = 0;
  virtual void recordDeleted(const Uuid& id) = 0;
  virtual void verification(const VerificationResult& result) = 0;
  virtual void rebuilt(const RebuildResult& result) = 0;
  /// Whether there were names of places to forget.
  virtual void placeNamesReset(bool hadAny) = 0;
  virtual void snapshotWritten(const std::string& path, std::uint64_t items) = 0;
  /// A folder name.
  virtual void name(const std::string& name) = 0;
  virtual void presets(const std::vector<NamePresets::Builtin>& presets) = 0;
  virtual void settings(const std::vector<KeptSetting>& settings) = 0;
  /// Templates of names, those that come with the program and those that were saved.
  virtual void templates(const std::vector<NamePresets::Builtin>& builtins,
                         const std::vector<SavedPreset>& saved) = 0;
  virtual void templateDeleted(const std::string& name) = 0;
  virtual void templatesForgotten() = 0;
};

}  // namespace tavrix::cli
