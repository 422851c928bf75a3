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

/// Carries out one run, from its first byte to its record: leg after leg, with the waits between
/// them for the phone and for room at the destination. Called on the main loop alone; copying takes
/// place in the background.
class RunControl {
 public:
  /// What a run needs of the model that it is a part of, which outlives it.
  struct Surroundings {
    const ModelServices& services;
    /// Changes the state and tells those who watch it.
    std::function<void(const std::function<void(AppState&)>&)> change;
    /// Whether the phone can be read.
    std::function<bool()> isPhoneThere;
    /// Told last of all, when the record is written and the state tells of the end.
    std::function<void()> ended;
  };

  RunControl(Surroundings surroundings, RunInProgress run);
  /// Asks the copying to end; what has landed stays.
  ~RunControl();
  RunControl(const RunControl&) = delete;
  RunControl& operator=(const RunControl&) = delete;

  /// To be called once.
  void begin(HeldDestination destination);
  /// Ends the copying, or the wait.
  void cancel();
  /// The phone that the run waits for is back: it goes on when the folders are back, too.
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
  /// Nothing when the run does not wait any more.
  void tellPause(std::optional<std::string> reason);

  void concludeCancelled();
  void concludeFailed(const std::exception_ptr& failure);
  void conclude();
  void finish(bool hasRecord);
  /// Writes the run as it stands now into the history; to be called in the background.
  std::function<bool()> recordTask(bool isUnderWay) const;

  void change(const std::function<void(AppState&)>& edit) { surroundings_.change(edit); }
  /// Wraps a task for the loop so that nothing happens when the run is gone.
  MainLoop::Task ifAlive(std::function<void()> task) const;
  /// The same after a while, where the run is still in a stage.
  void postIfStill(RunInProgress::Stage stage, std::chrono::milliseconds delay,
                   std::function<void()> task);

  Surroundings surroundings_;
  const ModelServices& services_ = surroundings_.services;
  std::shared_ptr<const bool> life_ = std::make_shared<bool>(true);
  RunInProgress run_;
  std::shared_ptr<TransferLeg> leg_;  ///< in the hands of the transfer thread
  /// Where the leg waits for its phone.
  std::shared_ptr<PhoneGate> gate_ = std::make_shared<PhoneGate>();
  std::shared_ptr<ProgressSlot> progressSlot_;
  std::optional<std::string> pausedReason_;
  bool isPhoneBack_ = false;
  /// How often the disk took nothing more although it had room, since a file landed.
  int refusals_ = 0;
};

}  // namespace tavrix
