#pragma once

#include <atomic>
#include <exception>
#include <mutex>
#include <optional>
#include <semaphore>
#include <vector>

#include "transfer/OutcomeLedger.h"
#include "transfer/PathRegister.h"
#include "transfer/ProgressMeter.h"
#include "transfer/TransferEngine.h"

namespace tavrix {

/// A file that is fetched and checked and waits for its final name.
struct ReadyFile {
  std::size_t index = 0;  ///< in the plan
  std::string part;       ///< where its bytes are
  std::string target;     ///< the name it wants
  std::string sha256;
  std::uint64_t size = 0;
  std::optional<ConversionFailure> keptBecause;  ///< why it is unconverted
};

/// One execution of a plan: what its workers share.
class TransferRun {
 public:
  TransferRun(const TransferEngine::Setup& setup, const TransferPlan& plan, MediaSource& source,
              Folder& destination, const TransferEngine::Progress& progress, std::stop_token stop);

  TransferReport execute();

 private:
  friend class TransferWorker;
  using Slots = std::counting_semaphore<64>;

  int downloadCount() const;
  int conversionCount() const;

  /// The next file to handle; nothing when there is none, or the run is to end.
  std::optional<std::size_t> nextIndex();
  /// Ends the run for all workers; the first cause counts.
  void halt(std::exception_ptr cause);
  bool isPlanned(const std::string& path);
  /// Brings all that was written to stable storage. Once that has failed it fails for ever: the
  /// system tells of lost bytes only once, and nobody can say whose they were.
  void syncVolume();
  /// Brings the names to stable storage and throws what ended the run early.
  void finish();
  void writeFinishLog(const TransferReport& report) const;

  const TransferEngine::Setup& setup_;
  const TransferPlan& plan_;
  MediaSource& source_;
  Folder& destination_;
  Log& log_;
  std::stop_token stop_;
  /// Ends the conversions under way, when the run is stopped and when it halts.
  std::stop_source conversionStop_;
  /// There are more workers than downloads at once, so that one fetches while others convert.
  Slots downloads_;
  Slots conversions_;
  ProgressMeter meter_;
  OutcomeLedger ledger_;

  std::atomic<std::size_t> next_ = 0;
  std::atomic<bool> isHalted_ = false;
  std::mutex mutex_;
  std::exception_ptr cause_;
  std::mutex syncMutex_;
  std::optional<FileError> syncFailure_;
  std::optional<PathRegister> plannedPaths_;
};

/// Whether a failure of the destination makes going on pointless: no space, a read-only or failing
/// disk, or the folder gone.
bool stopsRun(const FileError& error, const Folder& destination);

}  // namespace tavrix
