#pragma once

#include <chrono>
#include <exception>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>

#include "foundation/Log.h"
#include "foundation/Sentence.h"
#include "foundation/files/FileError.h"
#include "foundation/files/Folder.h"
#include "media/MediaSource.h"
#include "transfer/MediaConverter.h"
#include "transfer/TransferPlan.h"
#include "transfer/TransferReport.h"

namespace tavrix {

/// A file that has just got its final name, for whoever keeps the destination's memory.
struct LandedFile {
  const PlannedFile& planned;
  const FileOutcome& outcome;
  std::optional<std::string>
      sha256;  ///< of the bytes on disk; absent for a file that was there before
};

/// Writes a plan into a destination so that a final name never holds incomplete bytes: each file is
/// fetched into a ".part" file beside its place, its size checked, its bytes brought to stable
/// storage, and then renamed. Waiting for the storage is shared by files that are ready at the same
/// time. Nothing that exists is ever overwritten. An engine owns nothing beyond one run.
class TransferEngine {
 public:
  /// When the files that are ready are brought to stable storage together.
  struct CommitLimits {
    std::size_t files = 256;
    std::uint64_t bytes = std::uint64_t{256} << 20U;
    std::chrono::milliseconds wait{300};
    int conversions = 2;  ///< files that are converted at once, while others are fetched
  };

  struct Setup {
    MediaConverter* converter = nullptr;    ///< without one a conversion ends as keptOriginal
    Log* log = nullptr;                     ///< silent without one
    Language language = Language::russian;  ///< of the reasons in the report
    /// Called, one call at a time, for each file that lies under its final name. Must not throw.
    std::function<void(const LandedFile&)> landed = nullptr;
    CommitLimits limits = {};
  };

  /// The run was cancelled; the report holds what got through.
  class Cancelled : public std::exception {
   public:
    explicit Cancelled(TransferReport report) : report_(std::move(report)) {}
    const TransferReport& report() const { return report_; }
    const char* what() const noexcept override { return "Cancelled"; }

   private:
    TransferReport report_;
  };

  /// The destination failed in a way that makes going on pointless; the report holds what got
  /// through.
  class Interrupted : public std::exception {
   public:
    Interrupted(TransferReport report, const FileError& underlying)
        // NOLINTNEXTLINE(bugprone-throw-keyword-missing): a field, kept and not thrown.
        : report_(std::move(report)), underlying_(underlying) {}
    const TransferReport& report() const { return report_; }
    const FileError& underlying() const { return underlying_; }
    const char* what() const noexcept override { return "Interrupted"; }

   private:
    TransferReport report_;
    FileError underlying_;
  };

  using Progress = std::function<void(const TransferProgressSnapshot&)>;

  TransferEngine() = default;
  explicit TransferEngine(Setup setup) : setup_(std::move(setup)) {}

  /// Returns when every planned file has an outcome and all that was written, names included, is on
  /// stable storage. One file's failure is an outcome. Throws Cancelled, Interrupted. `progress` is
  /// called one call at a time, from the threads of the run. The caller holds the destination's
  /// lock.
  TransferReport run(const TransferPlan& plan, MediaSource& source, Folder& destination,
                     const Progress& progress = {}, std::stop_token stop = {}) const;

  /// The output name of a file whose conversion failed: the planned one with the asset's own
  /// extension.
  static std::string fallbackName(const PlannedFile& file);

 private:
  Setup setup_;
};

}  // namespace tavrix
