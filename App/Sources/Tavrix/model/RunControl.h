#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "model/ModelServices.h"
#include "model/PhoneGate.h"
#include "model/PublishedState.h"
#include "model/Run.h"
#include "model/RunAttempt.h"
#include "runs/DestinationReturn.h"

namespace tavrix {

/// Carries out one run, from its first byte to its record: attempt after attempt, with pauses
/// between them for the phone and for space at the destination. All functions must be called on the
/// main loop; copying happens in the background.
class RunControl {
 public:
  /// The parts of the model that a run needs. The model outlives the run.
  struct Surroundings {
    const ModelServices& services;
    PublishedState& state;
    /// Returns true if the phone can be read.
    std::function<bool()> isPhoneThere;
    /// Returns the number of the next event.
    std::function<EventNumber()> nextEvent;
    /// Called last, after the record is written and the state shows the end.
    std::function<void()> ended;
  };

  RunControl(Surroundings surroundings, Run run);
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

  const Run& now() const { return run_; }

 private:
  struct Reopened;
  struct ProgressSlot;

  void startAttempt(HeldDestination destination);
  std::shared_ptr<RunAttempt> attemptOn(HeldDestination destination);
  void follow(RunAttempt& attempt);
  void showProgress();
  void land(AttemptEnd end);

  void pauseForPhone(PhoneError::Kind kind);
  void meetFullDisk(bool hasLanded);
  void pauseForSpace();
  void landSpace(std::optional<std::uint64_t> free);
  /// Looks whether the volume of the destination went away, and then waits until it is back. If it
  /// did not, the run ends with the interruption of its outcome, or else with the failure.
  void awaitDestination(const std::exception_ptr& failure);
  void lookForDestination();
  void lookAgain();
  void landDestination(const DestinationLook& look);
  void resume();
  static std::shared_ptr<Reopened> reopen(const OpenFolder& open, const Run& run);
  void landReopened(Reopened& reopened);
  /// Publishes why the run waits; nullopt if it does not.
  void publishPause(std::optional<RunPause> pause);

  void concludeCancelled();
  void concludeLost(const std::exception_ptr& failure);
  void concludeFailed(const std::exception_ptr& failure);
  void conclude();
  void finish(bool hasRecord);
  /// Returns a task that writes the current state of the run to the history; run it in the
  /// background.
  std::function<bool()> recordTask(bool isUnderWay) const;

  /// Wraps a task for the loop so that it does nothing if the run is gone.
  MainLoop::Task ifAlive(std::function<void()> task) const;
  /// Runs the task after a delay, if the run has remained in the stage.
  template <typename Stage>
  void postIfStill(std::chrono::milliseconds delay, std::function<void()> task);

  Surroundings surroundings_;
  const ModelServices& services_ = surroundings_.services;
  std::shared_ptr<const bool> life_ = std::make_shared<bool>(true);
  Run run_;
  std::shared_ptr<RunAttempt> attempt_;  ///< used by the transfer thread
  /// The gate at which the attempt waits for its phone.
  std::shared_ptr<PhoneGate> gate_ = std::make_shared<PhoneGate>();
  std::shared_ptr<ProgressSlot> progressSlot_;
  std::uint64_t remainingBytes_ = 0;  ///< needed to complete the run, after an attempt
  std::uint64_t phoneWaits_ = 0;
  /// The number of failures for lack of space, despite free space, since a file last landed.
  int refusals_ = 0;
  /// The number of times that the destination failed and was there again, since a file last landed.
  int losses_ = 0;
};

}  // namespace tavrix
