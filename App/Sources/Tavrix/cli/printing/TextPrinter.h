#pragma once

#include <functional>
#include <optional>
#include <string>

#include "cli/printing/ResultPrinter.h"
#include "cli/printing/Table.h"
#include "foundation/Sentence.h"
#include "foundation/TimeZone.h"

namespace tavrix::cli {

/// Returns the part of a record's id that is enough to refer to it.
inline std::string shortID(const Uuid& id) { return id.text().substr(0, 8); }

/// Prints tables and sentences for people. Dates are in the zone in which days begin and end.
class TextPrinter : public ResultPrinter {
 public:
  TextPrinter(TextSink& sink, Language language, TimeZone zone, std::optional<int> columns)
      : sink_(sink), language_(language), zone_(std::move(zone)), columns_(columns) {}

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
  /// Prints nothing: the window is to be seen.
  void windowStarts(const std::string& /*program*/,
                    const std::vector<std::string>& /*arguments*/) override {}
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
  void line(const std::string& text) { sink_.write(text + '\n'); }
  Table table(std::vector<Table::Column> columns) const { return {std::move(columns), columns_}; }
  std::string count(std::uint64_t number, const CountedNoun& noun) const {
    return counted(language_, number, noun);
  }
  std::string number(std::uint64_t number) const { return numberText(language_, number); }
  std::string bytes(std::uint64_t number) const { return bytesText(language_, number); }
  static std::string pathOnPhone(const MediaAsset& asset);
  std::string kindText(const MediaAsset& asset) const;
  std::string kindText(const AssetBundle& bundle) const;
  std::string notes(const MediaAsset& asset) const;
  std::string dateText(const std::optional<Instant>& date) const;
  static std::string timeText(LocalTime local);
  /// Returns the time of the first shot on the clock of the group's days, or only its first day if
  /// that shot is left out.
  std::string beginText(const MediaGroup& group, const ShotClock& clock) const;
  std::string daysOf(const MediaGroup& group) const;
  /// Returns a date without its seconds, for lists that must be narrow.
  std::string minuteText(const Instant& date) const {
    return dateText(date).substr(0, std::string_view{"2026-05-20 12:00"}.size());
  }

  /// A line of a summary; a line of depth 1 is a part of the line of depth 0 above it.
  struct TallyRow {
    int depth;
    std::string label;
    std::uint64_t count;
    bool isShownWhenZero = false;
  };
  void tallyRows(std::vector<TallyRow> rows);
  /// Prints the first lines of a long list and how many more there are.
  void shortList(const std::string& title, const std::vector<std::string>& lines);
  /// Prints on a terminal the first failures and how many more there are, else all.
  void failures(const TransferResult& result);
  void findings(const CopyVerification::Report& report);
  std::string reasonOf(const CopyVerification::CheckedFile& file) const;

  /// Prints a template under its title: how it is typed, and what it gives.
  void templateLines(const NameTemplate& nameTemplate, const std::string& systemLocaleID);

  void placeTree(const PlaceTree& tree);
  void folders(const PlanResult& result);
  void plannedFiles(const TransferPlan& plan);
  void archives(const PlanResult& result);
  /// Lists the folders that get files under names that the template would not give.
  void continued(const Library& library, const TransferPlan& plan);
  void tally(const TransferTally& tally, bool hasRun);
  void nothing(const Library& library, const TransferPlan& plan, const std::string& destination);
  void headline(const TransferResult& result);
  void unreadFolders(const RunOutcome& outcome);
  std::string stateOf(const TransferRecord::File& file) const;
  std::string pathOrReason(const TransferRecord::File& file) const;
  std::string templateTitle(const std::string& name) const;
  void runFields(const TransferRecord& record);
  void runTotals(const TransferRecord::Totals& totals);
  void recordedFolder(const TransferRecord::Folder& folder);
  void oneSetting(const SettingDescription& setting);
  /// Prints labels and texts in two columns. Breaks texts so that lines fit into `columns`.
  void labelled(const std::vector<std::pair<std::string, std::string>>& rows,
                const std::string& indent, std::optional<int> columns);
  void groupTable(const GroupsResult& result);
  void home(const Library& library);
  void suggestions(const GroupsResult& result);
  void reasons(const GroupsResult& result);
  /// Prints how many shots only the date of their file dates; with reasons, each of them.
  void dateSources(const Library& library);
  void foldersWithReasons(const Library& library,
                          const std::function<std::string(const MediaGroup&)>& reasonOf);
  void stays(const Library& library, const TripReasons& reasons);
  void shotsOutsideTrips(const Library& library, const TripReasons& reasons);
  void countsOutsideTrips(const Library& library, const TripReasons& reasons);
  void list(const std::string& title, const std::vector<std::string>& lines);

  TextSink& sink_;
  Language language_;
  TimeZone zone_;
  std::optional<int> columns_;
};

}  // namespace tavrix::cli
