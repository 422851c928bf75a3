#pragma once

#include <chrono>
#include <vector>

#include "foundation/Digest.h"
#include "transfer/TransferRun.h"

namespace tavrix {

/// One thread's share of a run: takes files one by one, fetches them, and lands what is ready
/// together.
class TransferWorker {
 public:
  explicit TransferWorker(TransferRun& run) : run_(run) {}

  /// Works until there is nothing left or the run ends. Never throws: what goes wrong halts the
  /// run.
  void work() noexcept;

 private:
  void handle(std::size_t index);
  /// Gives the file's outcome at once when it needs no fetching or cannot be fetched.
  bool isSettledWithoutFetching(std::size_t index);
  /// Whether the volume may take letter cases for the same, so that the file that lies at a path
  /// can be another one whose name differs only there. Then its size says too little.
  bool mayBeAnothers(const PlannedFile& file, const FileStatus& status) const;
  void fetch(std::size_t index);
  /// False when the bytes are not what the phone listed; the outcome is recorded then.
  bool download(std::size_t index, ReadyFile& ready);
  void setDate(WritableFile& part, Instant date) const;
  void convert(ReadyFile& ready);
  void keepOriginal(ReadyFile& ready, ConversionFailure failure);
  std::uint64_t convertInto(const std::string& output, const ReadyFile& ready);

  bool isBatchFull() const;
  void commit();
  void land(const ReadyFile& ready);
  /// Renames to the first free name; true when a file with the same bytes has that name already.
  bool giveName(const ReadyFile& ready, std::string& path);
  bool hasSameBytes(const std::string& path, const ReadyFile& ready);
  std::string digestOf(const std::string& path);
  void discardBatch() noexcept;
  void removeQuietly(const std::string& path) noexcept;
  void fail(std::size_t index, std::string reason);

  const PlannedFile& planned(std::size_t index) const { return run_.plan_.files[index]; }

  TransferRun& run_;
  Sha256 digest_;
  std::uint64_t received_ = 0;  ///< of the file in hand
  std::vector<ReadyFile> batch_;
  std::uint64_t batchBytes_ = 0;
  std::chrono::steady_clock::time_point batchBegin_;
};

}  // namespace tavrix
