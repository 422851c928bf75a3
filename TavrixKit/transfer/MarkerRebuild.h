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

/// Finds the files of a destination that are copies of a phone's files, by size and SHA-256, if the
/// destination has no record of them. Copies and writes nothing.
namespace MarkerRebuild {

enum class State {
  alreadyRecorded,  ///< the phone's record has a digest for it and its present size; not read
  recognised,       ///< the same bytes as a file of the phone
  otherPhone,       ///< another phone's record has a digest for it and its present size; not read
  unmatched,        ///< no file of the phone has these bytes
  unreadable,
  notReached,  ///< the reading was stopped before it, or before all files of its size, were read
};
/// Returns the name of the enumerator.
std::string_view textOf(State state);

/// A file of the destination. The program's own files and ".part" files are left out.
struct ExaminedFile {
  std::string path;
  std::uint64_t size = 0;  ///< bytes
  State state = State::unmatched;
  std::optional<MediaAsset> asset;    ///< the asset that a recognised file is a copy of
  std::optional<std::string> sha256;  ///< if it was read
  int errorCode = 0;                  ///< errno, if unreadable

  friend bool operator==(const ExaminedFile&, const ExaminedFile&) = default;
};

struct Report {
  std::vector<ExaminedFile> files;           ///< by path
  std::vector<MediaAsset> unreadableAssets;  ///< needed files of the phone that could not be read;
                                             ///< by id
  std::vector<UnreadableFolder> unreadableFolders{};  ///< by path; their files were not examined
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
  /// The plan for an empty destination with the current settings. It decides which of several files
  /// with equal bytes belongs to which asset.
  const TransferPlan& plan;
  unsigned threads = 1;
};

/// Reads only files whose size occurs on both sides, each of them once. Of several assets with
/// equal bytes, a file is assigned the one that is planned at its path, then the one of the same
/// name apart from a number or prefix, then any that has no copy yet. An asset whose copy is
/// already recorded is not assigned while another one has no copy. A file that cannot be read gets
/// a state and stops nothing.
Report recognise(const Folder& destination, MediaSource& source, const Request& request,
                 const ReadingMeter::Receiver& progress = {}, const std::stop_token& stop = {});

/// Returns the entries of the recognised files, for the phone's record. `bundles` are the phone's
/// shots, which have their dates.
std::vector<DestinationMarker::FileRecord> records(const Report& report,
                                                   const std::vector<AssetBundle>& bundles,
                                                   bool hasSerialNumber);

}  // namespace MarkerRebuild

}  // namespace tavrix
