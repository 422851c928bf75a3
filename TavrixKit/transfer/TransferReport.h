#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "transfer/ConversionFailure.h"
#include "transfer/ReasonCode.h"

namespace tavrix {

enum class TransferStage { copying, verifying, converting, packing };

/// The progress of a run.
struct TransferProgressSnapshot {
  std::uint64_t filesDone = 0;  ///< files that have their outcome
  std::uint64_t filesTotal = 0;
  std::uint64_t bytesDone = 0;
  std::uint64_t bytesTotal = 0;
  std::optional<std::string> currentFileName;
  TransferStage stage = TransferStage::copying;
  std::uint64_t verifiedCount = 0;
  std::uint64_t convertedCount = 0;
  std::uint64_t packedGroups = 0;
  std::uint64_t packGroupsTotal = 0;
  std::optional<double> stageFraction;  ///< 0 to 1, if the stage is not counted in files

  friend bool operator==(const TransferProgressSnapshot&,
                         const TransferProgressSnapshot&) = default;
};

/// The outcome of one planned file.
struct FileOutcome {
  struct Failed {
    std::string reason;  ///< one sentence for the user
    ReasonCode code{};   ///< the same for programs
    friend bool operator==(const Failed&, const Failed&) = default;
  };
  struct Copied {
    friend bool operator==(const Copied&, const Copied&) = default;
  };
  struct AlreadyThere {
    friend bool operator==(const AlreadyThere&, const AlreadyThere&) = default;
  };
  /// The conversion failed, and the unconverted file is stored under its own name.
  struct KeptOriginal {
    ConversionFailure reason = ConversionFailure::failed;
    friend bool operator==(const KeptOriginal&, const KeptOriginal&) = default;
  };
  using Kind = std::variant<Failed, Copied, AlreadyThere, KeptOriginal>;

  std::string assetID;
  std::string name;                 ///< the output name
  std::optional<std::string> path;  ///< relative path of the file; absent if nothing landed
  std::uint64_t bytesOnDisk = 0;
  Kind kind;
  /// The destination refused the planned name, and the file has its safe form; see SafeNames.
  bool hasSafeName = false;
  bool isMisnamed = false;  ///< named as a JPEG file, but of another picture format

  template <typename K>
  bool is() const {
    return std::holds_alternative<K>(kind);
  }

  friend bool operator==(const FileOutcome&, const FileOutcome&) = default;
};

/// Returns "failed", "copied", "alreadyThere" or "keptOriginal".
std::string_view textOf(const FileOutcome::Kind& kind);

/// The result of a run, file by file.
struct TransferReport {
  std::uint64_t copied = 0;                      ///< files written by this run as planned
  std::uint64_t copiedPictures = 0;              ///< the pictures among them
  std::uint64_t resumedSkips = 0;                ///< files found complete and not written again
  std::uint64_t bytesCopied = 0;                 ///< bytes fetched from the source
  std::uint64_t bytesWritten = 0;                ///< bytes written to disk, after conversion
  std::vector<std::string> conversionFallbacks;  ///< output names of the files kept unconverted
  std::vector<std::string> failures;             ///< one line per failed file: name and reason
  std::uint64_t convertedSizeMismatches = 0;     ///< converted files whose size differs from the
                                                 ///< reported one
  std::vector<FileOutcome> files;                ///< in plan order

  friend bool operator==(const TransferReport&, const TransferReport&) = default;
};

}  // namespace tavrix
