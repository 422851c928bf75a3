#pragma once

#include <string>

#include "media/MediaSource.h"

namespace tavrix {

/// Reads media from an ordinary folder that holds the files flat, by name. A file that changes
/// while it is read is an error of that file.
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
