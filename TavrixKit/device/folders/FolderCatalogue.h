#pragma once

#include <cstdint>
#include <functional>
#include <stop_token>
#include <string>
#include <vector>

#include "device/folders/SourceFolder.h"
#include "device/metadata/MetadataPass.h"
#include "device/metadata/OddPaths.h"
#include "media/SnapshotItem.h"

namespace tavrix {

/// The catalogue of a folder that stands in for a phone.
struct FolderCatalogue {
  std::vector<SnapshotItem> items;  ///< in the order of the listing
  OddPaths oddPaths;                ///< of the items, to open them by their ids
  std::vector<SourceFolder::LeftOut> leftOut;
  /// The paths of files of the catalogue whose content cannot be read.
  std::vector<std::string> unreadable;
  MetadataPass::Progress progress;
  bool isComplete = true;  ///< false if reading was stopped: the rest has no metadata
  bool isKept = true;      ///< everything that was read is in the cache

  /// Returns the number of folders of which some or all files could not be seen.
  std::uint64_t unreadFolders() const;

  /// Lists a folder (one that SourceFolder::catalogueFolder() returned) and reads the metadata of
  /// those files that the cache does not have. Throws FileError if the folder cannot be listed.
  static FolderCatalogue read(const std::string& folder, MetadataPass::Setup setup,
                              const std::stop_token& stop = {});
  /// Reads the metadata of a file, given its path and its size in bytes.
  using ReadMetadata = std::function<MediaMetadata(const std::string& path, std::uint64_t size)>;
  /// Reads the metadata of the files of a listing. If `read` throws FileError, the file is
  /// unreadable or, if it is gone, left out. Throws only what `read` throws, except FileError.
  static FolderCatalogue of(SourceFolder::Listing listing, MetadataPass::Setup setup,
                            const ReadMetadata& read, const std::stop_token& stop = {});

  friend bool operator==(const FolderCatalogue&, const FolderCatalogue&) = default;
};

}  // namespace tavrix
