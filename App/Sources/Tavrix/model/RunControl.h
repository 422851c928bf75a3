#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "model/AppState.h"
#include "model/ModelServices.h"
#include "model/PhoneGate.h"
#include "model/RunInProgress.h"
#include "model/TransferLeg.h"

namespace tavrix {

/// Carries out one run, from its first byte to its record: leg after leg, with pauses between them
/// for the phone and for space at the destination. All functions must be called on the main loop;
/// copying happens in the background.
class RunControl {
 public:
  /// The functions of the model that a run needs. The model outlives the run.
  struct Surroundings {
    const ModelServices& services;
    /// Changes the state and notifies its observers.
    std::function<void(const std::function<void(AppState&)>&)> change;
    /// Returns true if the phone can be read.
    std::function<bool()> isPhoneThere;
    /// Called last, after the record is written and the state shows the end.
    std::function<void()> ended;
  };

  RunControl(Surroundings surroundings, RunInProgress run);
  /// Requests the end of copying; files that have landed stay.
  ~RunControl();
  RunControl(const RunControl&) = delete;
  RunControl& operator=(const RunControl&) = delete;

  /// Starts the run; call it once.
  void begin(HeldDestination destination);
  /// Ends the copying, or the pause.
  void cancel();
  /// The phone that the run waits for is back. The run continues once the folders are displayed
  /// again, which displayIsSettled() reports.
  void phoneIsBack();
  void displayIsSettled();

  const RunInProgress& now() const { return run_; }

 private:
  struct Reopened;
  struct ProgressSlot;

  void startLeg(HeldDestination destination);
  std::shared_ptr<TransferLeg> legOf(HeldDestination destination);
  void followLeg(TransferLeg& leg);
  void showProgress();
  void landLeg(LegEnd end);

  void pauseForPhone(PhoneError::Kind kind);
  void meetFullDisk(std::size_t filesBefore);
  void pauseForSpace();
  void landSpace(std::optional<std::uint64_t> free, std::uint64_t needed);
  void resume();
  static std::shared_ptr<Reopened> reopen(const ModelServices::OpenFolder& open,
                                          const RunInProgress& run);
  void landReopened(Reopened& reopened);
  /// Sets the reason for the pause; nullopt if the run is no longer paused.
  void tellPause(std::optional<std::string> reason);

  void concludeCancelled();
  void concludeFailed(const std::exception_ptr& failure);
  void conclude();
  void finish(bool hasRecord);
  /// Returns a task that writes the current state of the run to the history; run it in the
  /// background.
  std::function<bool()> recordTask(bool isUnderWay) const;

  void change(const std::function<void(AppState&)>& edit) { surroundings_.change(edit); }
  /// Wraps a task for the loop so that it does nothing if the run is gone.
  MainLoop::Task ifAlive(std::function<void()> task) const;
  /// Runs the task after a delay, if the run is still in the stage.
  void postIfStill(RunInProgress::Stage stage, std::chrono::milliseconds delay,
                   std::function<void()> task);

  Surroundings surroundings_;
  const ModelServices& services_ = surroundings_.services;
  std::shared_ptr<const bool> life_ = std::make_shared<bool>(true);
  RunInProgress run_;
  std::shared_ptr<TransferLeg> leg_;  ///< used by the transfer thread
  /// The gate at which the leg waits for its phone.
  std::shared_ptr<PhoneGate> gate_ = std::make_shared<PhoneGate>();
  std::shared_ptr<ProgressSlot> progressSlot_;
  std::optional<std::string> pausedReason_;
  bool isPhoneBack_ = false;
  /// The number of failures for lack of space, despite free space, since a file last landed.
  int refusals_ = 0;
};

}  // namespace tavrix
