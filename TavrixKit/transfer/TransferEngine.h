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

/// A file that has just got its final name, for the caller that keeps the destination's marker.
struct LandedFile {
  const PlannedFile& planned;
  const FileOutcome& outcome;
  std::optional<std::string>
      sha256;  ///< of the bytes on disk; absent for a file that already existed
};

/// Writes a plan into a destination so that a final name never holds incomplete bytes. Each file is
/// fetched into a ".part" file beside its final path; its size is checked, its bytes are synced to
/// stable storage, and the file is then renamed. Files that are ready at the same time share one
/// sync. Existing files are never overwritten, and renamed only in a run with Setup::replacement.
/// An engine keeps no state between runs.
class TransferEngine {
 public:
  /// The limits at which the files that are ready are synced together.
  struct CommitLimits {
    std::size_t files = 256;
    std::uint64_t bytes = std::uint64_t{256} << 20U;
    std::chrono::milliseconds wait{300};
    int conversions = 2;  ///< files that are converted at once, while others are fetched
  };

  /// The rules of a run that puts lost copies back at their recorded paths. Every file is fetched,
  /// whatever is at its path, and lands exactly there or fails. A file that is in the way is
  /// renamed beside it once the fetched bytes are accepted and on stable storage. Called from
  /// several threads.
  struct Replacement {
    /// Returns why the fetched bytes must not take the path; nullopt if they may.
    std::function<std::optional<FileOutcome::Failed>(const PlannedFile&, const std::string& sha256)>
        refusal;
    /// Called after a file in the way was renamed to `aside`.
    std::function<void(const PlannedFile&, const std::string& aside)> setAside;
  };

  struct Setup {
    MediaConverter* converter = nullptr;    ///< if nullptr, conversions end as keptOriginal
    Log* log = nullptr;                     ///< nullptr for no log
    Language language = Language::russian;  ///< of the reasons in the report
    /// Called for each file that has its final name, one call at a time. Must not throw.
    std::function<void(const LandedFile&)> landed = nullptr;
    /// Called around each sync of the volume, in turn with `landed`: what landed before the first
    /// is on stable storage under its name when the second is called. If the sync fails, the second
    /// is not called. Must not throw.
    std::function<void()> syncBegins = nullptr;
    std::function<void()> syncEnded = nullptr;
    CommitLimits limits = {};
    std::optional<Replacement> replacement{};  ///< nullopt: files that exist are never touched
  };

  /// Thrown if the run was cancelled; the report has the outcomes up to then.
  class Cancelled : public std::exception {
   public:
    explicit Cancelled(TransferReport report) : report_(std::move(report)) {}
    const TransferReport& report() const { return report_; }
    const char* what() const noexcept override { return "Cancelled"; }

   private:
    TransferReport report_;
  };

  /// Thrown if the destination failed in a way that makes it pointless to continue; the report has
  /// the outcomes up to then.
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

  /// Returns when every planned file has an outcome and all written data, names included, is on
  /// stable storage. A failure of a single file is an outcome. Throws Cancelled, Interrupted.
  /// `progress` is called from the threads of the run, one call at a time. The caller holds the
  /// destination's lock.
  TransferReport run(const TransferPlan& plan, MediaSource& source, Folder& destination,
                     const Progress& progress = {}, std::stop_token stop = {}) const;

  /// Returns the output name of a file whose conversion failed: the planned name with the asset's
  /// own extension.
  static std::string fallbackName(const PlannedFile& file);

 private:
  Setup setup_;
};

}  // namespace tavrix
