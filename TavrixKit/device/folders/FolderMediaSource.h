#pragma once

#include <memory>
#include <string>

#include "device/metadata/OddPaths.h"
#include "foundation/files/Folder.h"
#include "media/MediaSource.h"

namespace tavrix {

/// Reads the files of a folder that stands in for a phone. The id of an asset is its path below the
/// folder. Links are not followed. If a file changes while it is read, that file fails.
class FolderMediaSource : public MediaSource {
 public:
  /// `folder` is one that SourceFolder::catalogueFolder() returned, `oddPaths` those of its
  /// catalogue. Throws FileError if the folder cannot be opened.
  explicit FolderMediaSource(const std::string& folder, OddPaths oddPaths = {});

  void download(const MediaAsset& asset, DownloadDestination& destination) override;
  int concurrentDownloads() const override { return 2; }

 private:
  FileStatus statusOf(const std::string& path, const std::string& name) const;

  std::unique_ptr<Folder> folder_;
  OddPaths oddPaths_;
};

}  // namespace tavrix
