#pragma once

#include <cstdint>
#include <functional>
#include <stop_token>
#include <string>
#include <vector>

#include "device/MetadataPass.h"
#include "device/OddPaths.h"
#include "device/SourceFolder.h"
#include "media/SnapshotItem.h"

namespace tavrix {

/// The catalogue of a folder that stands for a phone.
struct FolderCatalogue {
  std::vector<SnapshotItem> items;  ///< in the order of the listing
  OddPaths oddPaths;                ///< of the items, for whoever fetches them by their ids
  std::vector<SourceFolder::LeftOut> leftOut;
  /// Files of the catalogue whose content cannot be read, by their path.
  std::vector<std::string> unreadable;
  MetadataPass::Progress progress;
  bool isComplete = true;  ///< false when reading was stopped: the rest has no metadata
  bool isKept = true;      ///< all that was read lies in the cache

  /// How many folders there are of whose files nobody has seen some or all.
  std::uint64_t unreadFolders() const;

  /// Lists a folder (one that SourceFolder::catalogueFolder gave) and reads the metadata of its
  /// files, as far as the cache does not hold them. Throws FileError when the folder cannot be
  /// listed.
  static FolderCatalogue read(const std::string& folder, MetadataPass::Setup setup,
                              const std::stop_token& stop = {});
  /// Reads the metadata of the files of a listing; `read` takes a file's path and size. Throws
  /// nothing but what `read` throws besides FileError.
  using ReadMetadata = std::function<MediaMetadata(const std::string& path, std::uint64_t size)>;
  static FolderCatalogue of(SourceFolder::Listing listing, MetadataPass::Setup setup,
                            const ReadMetadata& read, const std::stop_token& stop = {});

  friend bool operator==(const FolderCatalogue&, const FolderCatalogue&) = default;
};

}  // namespace tavrix
