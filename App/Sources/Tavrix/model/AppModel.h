#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "model/AppState.h"
#include "model/CoalescedWork.h"
#include "model/ConnectedSource.h"
#include "model/DisplayBuild.h"
#include "model/ModelServices.h"
#include "model/RunControl.h"

namespace tavrix {

/// All that an interface shows and does: the catalogue of the connected phone, what the person has
/// chosen, the folders that follow from it, and the run. Everything here is called, and every
/// observer told, on the main loop; computing and copying take place in the background.
class AppModel {
 public:
  using Services = ModelServices;
  using Observer = std::function<void(const AppState& before, const AppState& after)>;
  /// Ends with its last copy.
  using Subscription = std::shared_ptr<const Observer>;

  /// `settings` are those of a first launch; what the person has kept stands above them.
  AppModel(Services services, Settings settings);
  /// Asks a run to end; what it has landed stays.
  ~AppModel();
  AppModel(const AppModel&) = delete;
  AppModel& operator=(const AppModel&) = delete;

  const AppState& state() const { return state_; }
  /// From the next change on.
  [[nodiscard]] Subscription subscribe(Observer observer);
  /// Whether what is shown follows from what is chosen: no grouping or display is under way.
  bool isSettled() const;
  /// What the folders on screen were made of; null before the first.
  const std::shared_ptr<const Library>& library() const { return library_; }
  /// What a transfer of all folders would write, for the display on screen.
  const PlanOfAll& plan() const { return planned_; }
  /// Why nothing is known of the destination that is chosen; null where that is no failure.
  const std::exception_ptr& destinationFailure() const { return destinationFailure_; }

  /// Begins with what the person came for; once, however often it is called.
  void start();

  /// A phone has been read, or what stands for one.
  void sourceReady(ConnectedSource source, DataOrigin origin);
  /// It went, its reading was stopped, or it cannot be used for now.
  void sourceGone();
  /// Whether there is a phone to transfer from.
  bool hasSource() const { return source_ && isSourcePresent_; }

  void changeSettings(Settings settings);
  void changeSavedPresets(std::vector<SavedPreset> presets);
  /// Groups shown as one from now on, in the present mode; the new folder is highlighted.
  void mergeGroups(const std::vector<std::string>& ids);
  void unmergeGroup(const std::string& id);
  /// An empty name gives the folder back its own.
  void renameGroup(const std::string& id, const std::string& name);

  void setDestination(std::optional<std::string> destination);
  /// Looks again at what lies there.
  void refreshDestination();

  void toggleGroup(const std::string& stableKey);
  /// All or none of the visible groups.
  void includeAll();
  void includeNone();
  /// Of the visible groups.
  InclusionState inclusion() const;
  void search(std::string text);
  void navigate(NavSelection selection);

  /// The button: begins a run, or says in the state what stops it. Waits for what is being
  /// computed, so that what is shown is what is transferred.
  void startTransfer();
  /// The answers to the question about reduced copies.
  void transferEverything();
  void skipOptimizedAndTransfer();
  void dismissOptimizedQuestion();
  void dismissBlocker();
  /// A run with no file to copy is a run, too, with a record; for callers that ask for one.
  void setRunsWithoutFiles(bool runs) { runsWithoutFiles_ = runs; }
  /// Whether a start asks before it takes reduced copies along; it does unless told otherwise.
  void setAsksAboutOptimized(bool asks) { asksAboutOptimized_ = asks; }
  /// Ends the run, or the wait of one that pauses; also a start that is still being prepared.
  void cancelTransfer();
  /// Back from the summary.
  void leaveSummary();

  /// The last run from its start on; null before the first.
  const RunInProgress* run() const { return run_ ? &run_->now() : nullptr; }
  /// Why the last start came to nothing: a destination or source that cannot be opened.
  const std::exception_ptr& startFailure() const { return startFailure_; }

 private:
  enum class Start { none, asked, answered };  ///< of a run that waits for the display
  struct Prepared;

  void change(const std::function<void(AppState&)>& edit);
  /// Keeps what the person has changed since these.
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
