#pragma once

#include <memory>
#include <string>

#include "device/OddPaths.h"
#include "foundation/files/Folder.h"
#include "media/MediaSource.h"

namespace tavrix {

/// Reads the files of a folder that stands for a phone; an asset's id is its path below the folder.
/// Links are not followed. A file that changes while it is read is an error of that file.
class FolderMediaSource : public MediaSource {
 public:
  /// `folder` is one that SourceFolder::catalogueFolder gave, `oddPaths` those of its catalogue.
  /// Throws FileError when it cannot be opened.
  explicit FolderMediaSource(const std::string& folder, OddPaths oddPaths = {});

  void download(const MediaAsset& asset, DownloadDestination& destination) override;
  int concurrentDownloads() const override { return 2; }

 private:
  FileStatus statusOf(const std::string& path, const std::string& name) const;

  std::unique_ptr<Folder> folder_;
  OddPaths oddPaths_;
};

}  // namespace tavrix
