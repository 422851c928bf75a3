#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "foundation/StringMap.h"
#include "foundation/files/Folder.h"
#include "media/MediaSource.h"

namespace tavrix {

/// Reads the files of a folder that stands for a phone; an asset's id is its path below the folder.
/// Links are not followed. A file that changes while it is read is an error of that file.
class FolderMediaSource : public MediaSource {
 public:
  /// `folder` is one that SourceFolder::catalogueFolder gave. Throws FileError when it cannot be
  /// opened.
  explicit FolderMediaSource(const std::string& folder);

  void download(const MediaAsset& asset, DownloadDestination& destination) override;
  int concurrentDownloads() const override { return 2; }

 private:
  std::string pathOf(std::string_view id);
  FileStatus statusOf(const std::string& path, const std::string& name) const;

  std::unique_ptr<Folder> folder_;
  std::mutex mutex_;
  /// Paths of the files whose id does not spell them; read when one is first asked for.
  std::optional<StringMap<std::string>> oddPaths_;
};

}  // namespace tavrix
