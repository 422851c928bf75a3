#pragma once

#include <chrono>
#include <vector>

#include "foundation/Digest.h"
#include "transfer/FileLanding.h"

namespace tavrix {

/// One thread's share of a run: takes files one by one, fetches them, and lands the ready ones in
/// batches.
class TransferWorker {
 public:
  explicit TransferWorker(PlanExecution& run) : run_(run), landing_(run, digest_) {}

  /// Works until no file is left or the run ends. Never throws: an error halts the run.
  void work() noexcept;

 private:
  /// Brings one file to its outcome, or to the batch. Returns false, with nothing recorded, if that
  /// lacked a descriptor and the worker is not alone.
  bool handle(std::size_t index, bool isAlone);
  /// Takes back what was counted of the current file, which is fetched again later. Returns false.
  bool takeBack();
  /// Records the outcome and returns true if the file needs no fetching or cannot be fetched.
  bool isSettledWithoutFetching(std::size_t index);
  /// Returns true if the volume may ignore letter case, so that the file at the path can be another
  /// one whose name differs only in case. Equal sizes then prove too little.
  bool mayBeAnothers(const PlannedFile& file, const FileStatus& status) const;
  void fetch(std::size_t index);
  /// Returns the status of the planned path; nullopt also if the volume has no such names.
  std::optional<FileStatus> statusOf(const PlannedFile& file) const;
  /// Creates the temporary file and its folders. If the volume refuses the name, gives the file its
  /// safe name.
  std::unique_ptr<WritableFile> createPart(ReadyFile& ready);
  /// Returns false if the bytes are not those that the phone listed; the outcome is then recorded.
  bool download(std::size_t index, ReadyFile& ready);
  void setDate(const std::string& part, Instant date) const;
  void convert(ReadyFile& ready);
  void keepOriginal(ReadyFile& ready, ConversionFailure failure);
  std::uint64_t convertInto(const std::string& output, const ReadyFile& ready);

  bool isBatchFull() const;
  void commit();
  /// As handle(), for a file of the batch.
  bool land(ReadyFile& ready, bool isAlone);
  void discardBatch() noexcept;
  void fail(std::size_t index, FileOutcome::Failed failure);

  const PlannedFile& planned(std::size_t index) const { return run_.plan_.files[index]; }

  PlanExecution& run_;
  Sha256 digest_;
  FileLanding landing_;
  // The current file:
  std::uint64_t received_ = 0;  ///< bytes from the source so far
  std::uint64_t fetched_ = 0;   ///< bytes in the ledger
  bool isVerified_ = false;
  std::vector<ReadyFile> batch_;
  std::uint64_t batchBytes_ = 0;
  std::chrono::steady_clock::time_point batchBegin_;
};

}  // namespace tavrix
