#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "transfer/CopyVerification.h"
#include "transfer/ReasonCode.h"
#include "transfer/TransferPlan.h"
#include "transfer/TransferReport.h"

namespace tavrix {

/// Decides which changed and missing copies of a destination can be copied again from the phone.
/// Reads and writes nothing.
namespace CopyRepair {

/// The reason why a file stays as it is.
enum class KeptReason {
  otherPhone,      ///< another phone's record has the better claim to the path
  archive,         ///< the record names no file of the phone: an archive of several
  notInSource,     ///< the phone no longer has the file
  converted,       ///< it was converted; the phone has only the original, which has other bytes
  reducedCopy,     ///< the phone has only a reduced copy; the original is in the cloud
  otherContent,    ///< the phone's file of this id is not the recorded one, by size, digest or date
  notFile,         ///< a link, a folder or the like is at its path
  unreadable,      ///< the system cannot read what is at its path
  neverConfirmed,  ///< a killed run meant to write it: the next transfer does
  notReached,      ///< the command was stopped before it
};
/// Returns the name of the enumerator.
std::string_view textOf(KeptReason reason);

/// A file that is not intact and stays as it is.
struct KeptFile {
  std::string path;
  KeptReason reason = KeptReason::notReached;
  std::optional<std::string> assetID{};  ///< as recorded
  std::optional<std::uint64_t>
      expectedBytes{};                         ///< `otherContent`: the recorded size, if the sizes
  std::optional<std::uint64_t> sourceBytes{};  ///< differ, and that of the phone's file
  FileStatus::Type found = FileStatus::Type::file;  ///< `notFile`: what is at the path
  int errorCode = 0;                                ///< `unreadable`: errno
  std::string phone{};                              ///< `otherPhone`: its name

  /// Returns the reason for programs.
  ReasonCode code() const;

  friend bool operator==(const KeptFile&, const KeptFile&) = default;
};

/// The repairs to make, and the files that cannot be repaired.
struct Plan {
  TransferPlan files;  ///< by path; one asset may occur under several paths
  std::vector<DestinationMarker::FileRecord> records;  ///< the entry of each of `files`
  std::vector<KeptFile> kept;                          ///< by path
};

/// Returns what to do about every file of the report that is changed, missing, unreadable or never
/// confirmed. Plans a file of this phone's record if the phone has a file of its id and of the
/// recorded size. `bundles` are all shots of the phone; the result keeps them.
Plan plan(const CopyVerification::Report& report, const DestinationMarker::Marker& marker,
          const std::string& phoneHash, const std::vector<AssetBundle>& bundles);

/// Returns why bytes with this digest are not the recorded file; nullopt if they may be. An entry
/// without a digest was compared by size and date when it was planned.
std::optional<FileOutcome::Failed> refusal(const DestinationMarker::FileRecord& record,
                                           const std::string& sha256);
/// Returns the reason to leave a file as it is if its fetching failed because the source does not
/// have the recorded file; without path and id. Returns nullopt for every other failure.
std::optional<KeptFile> keptInsteadOf(const FileOutcome::Failed& failure);

}  // namespace CopyRepair

}  // namespace tavrix
