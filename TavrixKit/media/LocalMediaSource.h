#pragma once

#include <string>

#include "media/MediaSource.h"

namespace tavrix {

/// Reads media by name from an ordinary folder without subfolders. If a file changes while it is
/// being read, the download of this file fails.
class LocalMediaSource : public MediaSource {
 public:
  explicit LocalMediaSource(std::string baseURL) : baseURL_(std::move(baseURL)) {}

  void download(const MediaAsset& asset, DownloadDestination& destination) override;
  int concurrentDownloads() const override { return 2; }
  const std::string& baseURL() const { return baseURL_; }

 private:
  std::string baseURL_;
};

}  // namespace tavrix
