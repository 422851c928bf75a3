#pragma once

#include <cstdint>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "transfer/DestinationView.h"
#include "transfer/ReadingMeter.h"

namespace tavrix {

/// What became over time of the files that a destination's records name: they are read again and
/// compared by size and SHA-256. Nothing is written.
namespace CopyVerification {

enum class State {
  intact,      ///< size and digest are those of the record
  changed,     ///< size or digest differ, or no file stands there any more but a link, a folder
  missing,     ///< it was there once, and nothing is there
  unreadable,  ///< nobody can say what it holds
  withoutChecksum,  ///< there, of the recorded size where that can be compared; no digest to tell
                    ///< more
  neverConfirmed,   ///< a run meant to write it and was killed, and nothing is there: perhaps it
                    ///< never landed, perhaps it is lost
  notReached,       ///< the check was stopped before
};
/// The case names.
std::string_view textOf(State state);

/// A path that some record names.
struct CheckedFile {
  std::string path;
  State state = State::notReached;
  std::uint64_t expectedSize = 0;     ///< bytes, as recorded; 0 also where none was seen yet
  std::optional<std::uint64_t> size;  ///< bytes on disk
  std::optional<std::string> expectedSha256;        ///< as recorded
  std::optional<std::string> listedSha256;          ///< by Options::listed, where none is recorded
  std::optional<std::string> sha256;                ///< of the bytes on disk, where they were read
  FileStatus::Type found = FileStatus::Type::file;  ///< what stands there
  int errorCode = 0;                                ///< the system's (errno), of what is unreadable

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
  std::vector<UnknownFile> unknown;         ///< by path; the program's own files are not among them
  std::vector<std::string> leftOvers;       ///< of runs that were killed: ".part" files, and what
                                            ///< was staged to be packed; by path
  std::vector<std::string> damagedRecords;  ///< whose word nobody can read
  std::vector<UnreadableFolder> unreadableFolders{};  ///< by path; not looked into
  std::uint64_t bytesRead = 0;
  bool isStopped = false;

  std::uint64_t count(State state) const;
  /// Recorded files that are not there as they were, or cannot be told to be.
  std::uint64_t lostFiles() const;
  /// There are such files, or records or folders that may hide some.
  bool hasLosses() const;
};

struct Options {
  unsigned threads = 1;
  bool digestsAll = false;  ///< reads files without a recorded digest, too
  /// Digests by path that stand for those that no record knows.
  StringMap<std::string> listed{};
};

/// Checks every path that the records name. Of several entries of one path, one with a digest
/// counts more, then that of the later record. One file's failure is its state. `progress` is
/// called one call at a time, from the threads that read.
Report verify(const Folder& destination, const DestinationListing& listing, const Options& options,
              const ReadingMeter::Receiver& progress = {}, const std::stop_token& stop = {});

}  // namespace CopyVerification

}  // namespace tavrix
