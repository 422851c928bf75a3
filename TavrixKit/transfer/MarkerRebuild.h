#pragma once

#include <cstdint>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "media/MediaSource.h"
#include "transfer/DestinationView.h"
#include "transfer/ReadingMeter.h"
#include "transfer/TransferPlan.h"

namespace tavrix {

/// Finds out which files of a destination are copies of a phone's files, by size and SHA-256, where
/// the destination does not remember. Nothing is copied or written here.
namespace MarkerRebuild {

enum class State {
  alreadyRecorded,  ///< the phone's record names it with a digest, and the size still fits; not
                    ///< read
  recognised,       ///< the same bytes as a file of the phone
  otherPhone,       ///< another phone's record names it with a digest and this size; not read
  unmatched,        ///< no file of the phone has these bytes
  unreadable,
  notReached,  ///< stopped before it, or before all files of its size, were read
};
/// The case names.
std::string_view textOf(State state);

/// A file of the destination; the program's own files and ".part" files are not looked at.
struct ExaminedFile {
  std::string path;
  std::uint64_t size = 0;  ///< bytes
  State state = State::unmatched;
  std::optional<MediaAsset> asset;    ///< whose copy a recognised file is
  std::optional<std::string> sha256;  ///< where it was read
  int errorCode = 0;                  ///< the system's (errno), of what is unreadable

  friend bool operator==(const ExaminedFile&, const ExaminedFile&) = default;
};

struct Report {
  std::vector<ExaminedFile> files;  ///< by path
  std::vector<MediaAsset>
      unreadableAssets;  ///< wanted files of the phone that were not read; by id
  std::vector<UnreadableFolder> unreadableFolders{};  ///< by path; not looked into
  std::uint64_t bytesRead = 0;
  bool isStopped = false;

  std::uint64_t count(State state) const;
  bool hasFailures() const {
    return !unreadableAssets.empty() || !unreadableFolders.empty() || count(State::unreadable) > 0;
  }
};

struct Request {
  const DestinationListing& listing;
  const std::string& phoneHash;
  const std::vector<MediaAsset>& assets;  ///< of the phone
  /// Where the phone's files would go by the settings, were the destination empty: tells among
  /// files of equal bytes which is whose.
  const TransferPlan& plan;
  unsigned threads = 1;
};

/// Reads only files whose size a file of the other side has, each of them once. Of files with equal
/// bytes each takes the file of the phone that is planned at its path, then the one whose name it
/// has, a number or prefix aside, then any that has no copy yet; a file of the phone whose copy is
/// already recorded is no choice while another has none. One file's failure is its state.
Report recognise(const Folder& destination, MediaSource& source, const Request& request,
                 const ReadingMeter::Receiver& progress = {}, const std::stop_token& stop = {});

/// The entries of what was recognised, for the phone's record. `bundles` are the phone's shots,
/// which tell when they were taken.
std::vector<DestinationMarker::FileRecord> records(const Report& report,
                                                   const std::vector<AssetBundle>& bundles,
                                                   bool hasSerialNumber);

}  // namespace MarkerRebuild

}  // namespace tavrix
