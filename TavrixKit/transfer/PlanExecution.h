#pragma once

#include <atomic>
#include <exception>
#include <mutex>
#include <optional>
#include <semaphore>
#include <shared_mutex>
#include <vector>

#include "transfer/OutcomeLedger.h"
#include "transfer/PathRegister.h"
#include "transfer/ProgressMeter.h"
#include "transfer/SafeNumbers.h"
#include "transfer/TransferEngine.h"

namespace tavrix {

/// A file that is fetched and checked and waits for its final name.
struct ReadyFile {
  std::size_t index = 0;  ///< in the plan
  std::string part;       ///< the path of its bytes
  std::string target;     ///< the path that it should get
  std::string sha256;
  std::uint64_t size = 0;
  std::optional<ConversionFailure> keptBecause;  ///< why it is unconverted
  bool hasSafeName = false;                      ///< the planned name was refused
  bool isMisnamed = false;                       ///< see FileOutcome
};

/// One execution of a plan: the state that its workers share.
class PlanExecution {
 public:
  PlanExecution(const TransferEngine::Setup& setup, const TransferPlan& plan, MediaSource& source,
                Folder& destination, const TransferEngine::Progress& progress,
                std::stop_token stop);

  TransferReport execute();

 private:
  friend class TransferWorker;
  friend class FileLanding;
  using Slots = std::counting_semaphore<64>;

  int downloadCount() const;
  int conversionCount() const;

  /// Returns the index of the next file; nullopt if none is left or the run is to end.
  std::optional<std::size_t> nextIndex();
  /// Carries out one step of a file, which returns false if it lacked a descriptor. If so, waits
  /// until the steps of all other workers have ended and carries it out once more, alone; it must
  /// then return true.
  void carryOut(const std::function<bool(bool isAlone)>& step);
  /// Ends the run for all workers. Only the first cause is kept.
  void halt(std::exception_ptr cause);
  bool isPlanned(const std::string& path);
  /// Syncs all written data to stable storage. After one failure every further call fails: the
  /// system reports lost bytes only once, and does not say which files lost them.
  void syncVolume();
  /// Returns true if an error of the volume itself ended the run, rather than a lack of space.
  bool isVolumeBroken() const;
  /// Syncs the names to stable storage and throws the error that ended the run early.
  void finish();
  void writeFinishLog(const TransferReport& report) const;

  const TransferEngine::Setup& setup_;
  const TransferPlan& plan_;
  MediaSource& source_;
  Folder& destination_;
  Log& log_;
  std::stop_token stop_;
  /// Ends the running conversions when the run is stopped or halts.
  std::stop_source conversionStop_;
  /// There are more workers than download slots, so that one fetches while others convert.
  Slots downloads_;
  Slots conversions_;
  ProgressMeter meter_;
  OutcomeLedger ledger_;
  SafeNumbers safeNumbers_;

  std::atomic<std::size_t> next_ = 0;
  std::atomic<bool> isHalted_ = false;
  std::mutex mutex_;
  std::exception_ptr cause_;
  std::shared_mutex steps_;  ///< held for the time of a step, alone or together with others
  std::mutex syncMutex_;
  std::optional<FileError> syncFailure_;
  std::optional<PathRegister> plannedPaths_;
};

/// Returns true if a failure of the destination makes it pointless to continue: no space, a
/// read-only or failing disk, or the folder gone.
bool stopsRun(const FileError& error, const Folder& destination);

}  // namespace tavrix
