#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "foundation/tasks/CoalescedWork.h"
#include "model/AppState.h"
#include "model/ConnectedSource.h"
#include "model/DisplayBuild.h"
#include "model/ModelServices.h"
#include "model/RunControl.h"

namespace tavrix {

/// Everything that an interface displays and does: the catalogue of the connected phone, the user's
/// choices, the resulting folders, and the run. All functions must be called on the main loop, and
/// observers are called there; computing and copying happen in the background.
class AppModel {
 public:
  using Services = ModelServices;
  using Observer = std::function<void(const AppState& before, const AppState& after)>;
  /// Ends when its last copy is destroyed.
  using Subscription = std::shared_ptr<const Observer>;

  /// `settings` are the settings of a first launch; the user's persistent choices override them.
  AppModel(Services services, Settings settings);
  /// Requests the end of a run; files that have landed stay.
  ~AppModel();
  AppModel(const AppModel&) = delete;
  AppModel& operator=(const AppModel&) = delete;

  const AppState& state() const { return state_; }
  /// Calls the observer from the next change on.
  [[nodiscard]] Subscription subscribe(Observer observer);
  /// Returns true if the display is up to date with the choices: no grouping or display is being
  /// computed.
  bool isSettled() const;
  /// Returns the library behind the folders on screen, and nullptr before the first one.
  const std::shared_ptr<const Library>& library() const { return library_; }
  /// Returns the plan for a transfer of all folders, as of the display on screen.
  const PlanOfAll& plan() const { return planned_; }
  /// Returns why the chosen destination could not be read, and nullptr if there was no failure.
  const std::exception_ptr& destinationFailure() const { return destinationFailure_; }

  /// Starts to follow the phones, except in a demo. Further calls have no effect.
  void start();

  /// Takes over a source whose catalogue has been read: a phone, a snapshot or a folder.
  void sourceReady(ConnectedSource source, DataOrigin origin);
  /// Called if the source has gone, its reading was stopped, or it cannot be used for now.
  void sourceGone();
  /// Returns true if there is a source to transfer from.
  bool hasSource() const { return source_ && isSourcePresent_; }

  void changeSettings(Settings settings);
  void changeSavedPresets(std::vector<SavedPreset> presets);
  /// Shows groups as one from now on, in the current mode, and highlights the new folder.
  void mergeGroups(const std::vector<std::string>& ids);
  void unmergeGroup(const std::string& id);
  /// An empty name restores the folder's own name.
  void renameGroup(const std::string& id, const std::string& name);

  void setDestination(std::optional<std::string> destination);
  /// Reads the content of the destination again.
  void refreshDestination();

  void toggleGroup(const std::string& stableKey);
  /// Check all or none of the visible groups.
  void includeAll();
  void includeNone();
  /// Returns how many of the visible groups are checked.
  InclusionState inclusion() const;
  void search(std::string text);
  void navigate(NavSelection selection);

  /// Begins a run, or sets in the state what prevents it. Waits for computations that are under
  /// way, so that exactly what is shown is transferred.
  void startTransfer();
  /// The answers to the question about reduced copies.
  void transferEverything();
  void skipOptimizedAndTransfer();
  void dismissOptimizedQuestion();
  void dismissBlocker();
  /// If true, a run without files to copy is carried out as well and gets a record.
  void setRunsWithoutFiles(bool runs) { runsWithoutFiles_ = runs; }
  /// If true, which is the default, a start asks before it transfers reduced copies.
  void setAsksAboutOptimized(bool asks) { asksAboutOptimized_ = asks; }
  /// Ends the run, even while it is paused, or a start that is still being prepared.
  void cancelTransfer();
  /// Returns from the summary to browsing.
  void leaveSummary();

  /// Returns the last run, from its start on, and nullptr before the first one.
  const RunInProgress* run() const { return run_ ? &run_->now() : nullptr; }
  /// Returns why the last start failed: a destination or source that cannot be opened.
  const std::exception_ptr& startFailure() const { return startFailure_; }

 private:
  enum class Start { none, asked, answered };  ///< whether a run waits for the display
  struct Prepared;

  void change(const std::function<void(AppState&)>& edit);
  /// Stores the choices that differ from these earlier ones.
  void keepChoices(const Shared<Settings>& settings,
                   const Shared<std::vector<SavedPreset>>& presets);
  void clearCatalogue();
  void requestShots();
  void requestGrouping();
  void requestDisplay();
  void landLibrary(std::shared_ptr<const Library> library,
                   std::shared_ptr<const LibraryFacts> facts);
  void landDisplay(DisplayResult result);
  void setIncluded(const std::function<bool(const DisplayGroup&)>& isIncluded);

  void proceedWithStart();
  void block(TransferBlocker blocker);
  void prepare();
  static void look(Prepared& prepared, const ConnectedSource& source,
                   const std::optional<Packing>& packing, const ModelServices::OpenFolder& open);
  void land(Prepared& prepared);
  void beginRun(Prepared& prepared);

  Services services_;
  std::shared_ptr<const bool> life_ = std::make_shared<bool>(true);
  AppState state_;
  std::vector<std::weak_ptr<const Observer>> observers_;

  std::optional<ConnectedSource> source_;
  bool isSourcePresent_ = false;
  Shared<std::vector<AssetBundle>> allBundles_;
  std::shared_ptr<const Library> library_;
  std::shared_ptr<const LibraryFacts> facts_;
  std::shared_ptr<const Destination::Content> destination_;
  std::exception_ptr destinationFailure_;
  bool isStarted_ = false;
  PlanOfAll planned_;
  CoalescedWork shots_;
  CoalescedWork grouping_;
  CoalescedWork display_;
  CoalescedWork destinationIndex_;

  Start start_ = Start::none;
  bool isPreparing_ = false;
  bool runsWithoutFiles_ = false;
  bool asksAboutOptimized_ = true;
  std::exception_ptr startFailure_;
  std::unique_ptr<RunControl> run_;
};

}  // namespace tavrix
