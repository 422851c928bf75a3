#pragma once

#include <cstdint>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "transfer/DestinationView.h"
#include "transfer/ReadingMeter.h"

namespace tavrix {

/// Verifies the files that a destination's records name: reads them again and compares size and
/// SHA-256. Writes nothing.
namespace CopyVerification {

enum class State {
  intact,           ///< size and digest are those of the record
  changed,          ///< size or digest differ, or the path is now a link, a folder or the like
  missing,          ///< the file was on disk once and is gone
  unreadable,       ///< the system could not read it
  withoutChecksum,  ///< present, with the recorded size if that can be compared; no digest to
                    ///< compare with
  neverConfirmed,   ///< absent; a killed run meant to write it, and it may never have landed or may
                    ///< be lost
  notReached,       ///< the check was stopped before it
  beingWritten,     ///< left out: a transfer that is running writes it, see RunningTransfer
};
/// Returns the name of the enumerator.
std::string_view textOf(State state);

/// A path that at least one record names.
struct CheckedFile {
  std::string path;
  State state = State::notReached;
  std::uint64_t expectedSize = 0;     ///< bytes, as recorded; 0 also if it was never seen on disk
  std::optional<std::uint64_t> size;  ///< bytes on disk
  std::optional<std::string> expectedSha256;        ///< as recorded
  std::optional<std::string> listedSha256;          ///< from Options::listed, if none is recorded
  std::optional<std::string> sha256;                ///< of the bytes on disk, if they were read
  FileStatus::Type found = FileStatus::Type::file;  ///< the type of what is at the path
  int errorCode = 0;                                ///< errno, if unreadable

  friend bool operator==(const CheckedFile&, const CheckedFile&) = default;
};

/// A file that no record names.
struct UnknownFile {
  std::string path;
  std::uint64_t size = 0;

  friend bool operator==(const UnknownFile&, const UnknownFile&) = default;
};

struct Report {
  std::vector<CheckedFile> files;           ///< by path
  std::vector<UnknownFile> unknown;         ///< by path; without the program's own files
  std::vector<std::string> leftOvers;       ///< of killed runs: ".part" files and files staged for
                                            ///< packing; by path
  std::vector<std::string> damagedRecords;  ///< record files that cannot be decoded
  std::vector<UnreadableFolder> unreadableFolders{};  ///< by path; their files were not checked
  std::uint64_t bytesRead = 0;
  bool isStopped = false;
  bool isTransferRunning = false;  ///< another process wrote into the folder during the check
  /// Files of that transfer that are in neither `unknown` nor `leftOvers`: ".part" files, staged
  /// files, and files recorded after the marker was read; by path.
  std::vector<std::string> ofRunningTransfer{};

  std::uint64_t count(State state) const;
  /// Returns the number of recorded files that have changed, are missing, or cannot be confirmed.
  std::uint64_t lostFiles() const;
  /// Returns true if there are such files, or damaged records or unreadable folders that may hide
  /// some.
  bool hasLosses() const;
};

struct Options {
  unsigned threads = 1;
  bool digestsAll = false;  ///< reads files without a recorded digest, too
  /// Digests by path, used for files without a recorded digest.
  StringMap<std::string> listed{};
};

/// Checks every path that the records name. If several entries name one path, an entry with a
/// digest takes precedence, then the entry of the later record. A file that cannot be checked gets
/// a state and stops nothing. `progress` is called from the reading threads, one call at a time.
Report verify(const Folder& destination, const DestinationListing& listing, const Options& options,
              const ReadingMeter::Receiver& progress = {}, const std::stop_token& stop = {});

}  // namespace CopyVerification

}  // namespace tavrix
