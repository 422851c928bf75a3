#pragma once

#include "cli/printing/ResultPrinter.h"
#include "foundation/json/JsonWriter.h"

namespace tavrix::cli {

/// Prints one JSON document per result. The language of the call changes neither keys nor values:
/// sentences are in Russian, except in history records, which keep the language of their run. Omits
/// absent values. The sink must outlive this object and may throw.
class JsonPrinter : public ResultPrinter {
 public:
  explicit JsonPrinter(TextSink& sink) : sink_(sink) {}

  void catalog(const std::vector<MediaAsset>& assets) override;
  void bundles(const std::vector<AssetBundle>& bundles) override;
  void groups(const GroupsResult& result) override;
  void places(const PlacesResult& result) override;
  void plan(const PlanResult& result) override;
  void transfer(const TransferResult& result) override;
  void runs(const std::vector<RecordSummary>& runs, bool isWhole) override;
  void fileRuns(const std::vector<HistoryStore::FileRun>& runs) override;
  void record(const TransferRecord& record) override;
  void recordDeleted(const Uuid& id) override;
  void verification(const VerificationResult& result) override;
  void repaired(const RepairOutcome& outcome) override;
  void rebuilt(const RebuildResult& result) override;
  void placeNamesReset(bool hadAny) override;
  void thumbnailsWritten(std::uint64_t written, std::uint64_t failed) override;
  void windowStarts(const std::string& program, const std::vector<std::string>& arguments) override;
  void snapshotWritten(const std::string& path, std::uint64_t items) override;
  void name(const std::string& name) override;
  void presets(const std::vector<NamePresets::Builtin>& presets,
               const std::string& systemLocaleID) override;
  void settings(const std::vector<KeptSetting>& settings) override;
  void allSettings(const std::vector<SettingDescription>& settings) override;
  void help(const HelpTopic& topic) override;
  void templates(const std::vector<NamePresets::Builtin>& builtins,
                 const std::vector<SavedPreset>& saved, const std::string& systemLocaleID) override;
  void templateSaved(const std::vector<NamePresets::Builtin>& builtins,
                     const std::vector<SavedPreset>& saved, const SavedPreset& changed,
                     const std::string& systemLocaleID) override;
  void templateDeleted(const std::string& name) override;
  void templatesForgotten(const std::vector<NamePresets::Builtin>& builtins) override;

 private:
  TextSink& sink_;
};

}  // namespace tavrix::cli
