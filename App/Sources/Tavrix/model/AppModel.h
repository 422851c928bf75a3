#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "foundation/tasks/CoalescedWork.h"
#include "library/Choice.h"
#include "model/ConnectedSource.h"
#include "model/DisplayBuild.h"
#include "model/ModelServices.h"
#include "model/PublishedState.h"
#include "model/RunControl.h"

namespace tavrix {

/// Everything that an interface displays and does: the catalogue of the connected phone, the user's
/// choices, the resulting folders, and the run. All functions must be called on the main loop, and
/// observers are called there; computing and copying happen in the background.
class AppModel {
 public:
  using Services = ModelServices;
  using Observer = PublishedState::Observer;
  using Subscription = PublishedState::Subscription;

  /// `settings` are the settings of a first launch; the user's persistent choices override them.
  AppModel(Services services, Settings settings);
  /// Requests the end of a run; files that have landed stay.
  ~AppModel();
  AppModel(const AppModel&) = delete;
  AppModel& operator=(const AppModel&) = delete;

  const AppState& state() const { return *state_; }
  /// Subscribes an observer to all changes from the next one on. It is called once per turn of the
  /// loop.
  [[nodiscard]] Subscription subscribe(Observer observer);
  /// Returns true if the display is up to date with the choices: no grouping, display or counters
  /// are being computed.
  bool isSettled() const;
  /// Returns the library behind the folders on screen, and nullptr before the first one.
  const std::shared_ptr<const Library>& library() const { return library_; }
  /// Returns the plan for a transfer of all folders, as of the display on screen.
  const PlanOfAll& plan() const { return planned_; }

  /// Starts to follow the phones, except in a demo. Further calls have no effect.
  void start();
  /// Sets the function that is called directly, before any observer, when a run begins (true) and
  /// when it has ended and its summary is shown (false). It steers what a run depends on.
  void steerWith(std::function<void(bool isTransferring)> steer) { steer_ = std::move(steer); }

  /// Takes over a source whose catalogue has been read: a phone, a snapshot or a folder.
  void sourceReady(ConnectedSource source, DataOrigin origin);
  /// Called if the source has gone, its reading was stopped, or it cannot be used for now.
  void sourceGone();
  /// Called while browsing, if the user turns to another source, which is yet to be read.
  void closeSource();
  /// Returns true if there is a source to transfer from.
  bool hasSource() const { return std::holds_alternative<Present>(source_); }
  /// Returns the files of the source that can be read now, and nullptr if there is none.
  std::shared_ptr<const SourceFiles> files() const;
  /// Returns the phone of the source, present or away, and nullopt if there is none.
  std::optional<PhoneIdentity> phone() const;
  /// Takes over what is known about the phones on the cable, for display.
  void deviceChanged(DeviceFacts device);

  void changeSettings(Settings settings);
  void changeSavedPresets(std::vector<SavedPreset> presets);
  /// Shows groups as one from now on, in the current mode, and highlights the new folder.
  void mergeGroups(const std::vector<std::string>& ids);
  void unmergeGroup(const std::string& id);
  /// Makes a merge of the current mode no suggestion any more.
  void rejectSuggestion(const std::vector<std::string>& ids);
  /// An empty name restores the folder's own name.
  void renameGroup(const std::string& id, const std::string& name);

  void setDestination(std::optional<std::string> destination);
  /// Reads the content of the destination again.
  void refreshDestination();

  void toggleGroup(const std::string& stableKey);
  /// Check all or none of the visible groups.
  void includeAll();
  void includeNone();
  /// Return the keys of the groups that the user has checked or unchecked explicitly.
  std::vector<std::string> selectedKeys() const;
  std::vector<std::string> excludedKeys() const;
  void search(std::string text);
  void navigate(NavSelection selection);

  void openTemplateEditor() { open(overlay::TemplateEditor{}); }
  void openOptimizedInfo() { open(overlay::OptimizedInfo{}); }
  /// Closes what lies over the screen, if anything. Closing a question answers it with no.
  void closeOverlay();

  /// Begins a run, or sets in the state what prevents it. Waits for computations that are under
  /// way, so that exactly what is shown is transferred.
  void startTransfer();
  /// The answers to the question about reduced copies.
  void transferEverything();
  void skipOptimizedAndTransfer();
  /// If true, a run without files to copy is carried out as well and gets a record.
  void setRunsWithoutFiles(bool runs) { runsWithoutFiles_ = runs; }
  /// If true, which is the default, a start asks before it transfers reduced copies.
  void setAsksAboutOptimized(bool asks) { asksAboutOptimized_ = asks; }
  /// Restricts the next runs to a part of the checked folders.
  void choose(Choice choice) { choice_ = std::move(choice); }
  /// Ends the run, even while it is paused, or a start that is still being prepared.
  void cancelTransfer();
  /// Returns from the summary to browsing.
  void leaveSummary();

  /// Returns the last run, from its start on, and nullptr before the first one.
  const Run* run() const { return run_ ? &run_->now() : nullptr; }

 private:
  /// The source can be read.
  struct Present {
    ConnectedSource source;
  };
  /// It has gone; its folders stay on screen during a run and its summary.
  struct Away {
    ConnectedSource source;
  };
  using Source = std::variant<std::monostate, Present, Away>;

  /// No run is wanted.
  struct NotStarting {};
  /// The user has pressed «Transfer»; the display is awaited.
  struct Awaiting {
    bool isAnswered = false;  ///< the question about reduced copies has been answered
  };
  /// The destination is being opened and the plan is being made. Without `wanted` the user has
  /// cancelled in the meantime.
  struct Preparing {
    std::optional<Awaiting> wanted;
  };
  using Start = std::variant<NotStarting, Awaiting, Preparing>;

  struct Prepared;
  struct DestinationLook;

  EventNumber nextEvent() { return ++lastEvent_; }
  void open(Overlay::Kind kind);
  /// Returns the source, present or away, and nullptr if there is none.
  ConnectedSource* source();
  const ConnectedSource* source() const { return const_cast<AppModel*>(this)->source(); }
  /// Publishes whether anything is being computed.
  void publishActivity();
  /// Stores the choices that differ from these earlier ones.
  void keepChoices(const Shared<Settings>& settings,
                   const Shared<std::vector<SavedPreset>>& presets);
  void clearCatalogue();
  void requestShots();
  void requestGrouping();
  void requestDisplay();
  ContinuationContext continuationContext() const;
  DisplayRequest displayRequest() const;
  void landLibrary(std::shared_ptr<const Library> library,
                   std::shared_ptr<const LibraryFacts> facts);
  void landDisplay(DisplayResult result, const Shared<CheckMarks>& checks);
  void settled();
  void writeGroupsDebug();
  static void checkUsable(const std::string& path, const SourceFiles* files);
  void landDestination(DestinationLook& look);
  void requestFindings();
  void publishDestination(DestinationState state);

  void setIncluded(bool isIncluded);
  void changeChecks(CheckMarks checks);
  /// Counts by folder, and has the exact counters made if they may differ.
  void recount();
  void publishCounters(const PlanCounters& counters, bool areExact);

  bool isStarting() const;
  void proceedWithStart();
  void block(TransferBlocker blocker);
  void prepare(Awaiting awaiting);
  static std::shared_ptr<const Choosing> choosingFor(const Prepared& prepared,
                                                     const ConnectedSource& source,
                                                     const ModelServices& services);
  static void look(Prepared& prepared, const ConnectedSource& source,
                   const ModelServices& services);
  void land(Prepared& prepared);
  void beginRun(Prepared& prepared);
  void runEnded();

  Services services_;
  std::shared_ptr<const bool> life_ = std::make_shared<bool>(true);
  PublishedState state_;
  EventNumber lastEvent_ = 0;
  std::function<void(bool)> steer_;
  bool isFollowing_ = false;  ///< start() was called

  Source source_;
  Shared<std::vector<AssetBundle>> allBundles_;
  std::shared_ptr<const Library> library_;
  std::shared_ptr<const LibraryFacts> facts_;
  std::shared_ptr<const Destination::Content> destination_;
  std::shared_ptr<FolderKeys> keys_ = std::make_shared<FolderKeys>();
  PlanOfAll planned_;
  Shared<FolderTotals> totals_;
  CoalescedWork shots_;
  CoalescedWork grouping_;
  CoalescedWork display_;
  CoalescedWork counters_;
  CoalescedWork destinationIndex_;
  CoalescedWork findings_;

  Start start_;
  bool runsWithoutFiles_ = false;
  bool asksAboutOptimized_ = true;
  Choice choice_;
  std::unique_ptr<RunControl> run_;
};

}  // namespace tavrix
