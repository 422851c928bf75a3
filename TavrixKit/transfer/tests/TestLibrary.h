#pragma once

#include <fcntl.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "foundation/tests/support/FaultyFolder.h"
#include "foundation/tests/support/TemporaryFolder.h"
#include "media/BundleBuilder.h"
#include "media/MediaSource.h"
#include "transfer/TransferEngine.h"
#include "transfer/TransferPlanner.h"

namespace tavrix {

/// Returns bytes that differ from file to file, also for files of one size.
inline std::string contentOf(const std::string& name, std::size_t size) {
  std::string content;
  std::uint64_t state = std::hash<std::string>{}(name) | 1U;
  while (content.size() < size) {
    state = state * 6364136223846793005U + 1442695040888963407U;
    content += static_cast<char>(state >> 56U);
  }
  return content;
}

/// Returns an asset of a phone with an id such as "100APPLE/IMG_0001.HEIC"; its name determines its
/// kind.
inline MediaAsset assetOf(const std::string& id, std::uint64_t size = 1000,
                          std::optional<std::string> cloudID = {}) {
  const auto slash = id.find('/');
  const std::string name = slash == std::string::npos ? id : id.substr(slash + 1);
  const auto directory = slash == std::string::npos ? MediaAsset::Text{}
                                                    : MediaAsset::Text{id}.value().substr(0, slash);
  return MediaAsset{id,
                    name,
                    directory,
                    mediaKindOfFileName(name),
                    size,
                    Instant{std::chrono::seconds{1779278400}},
                    std::nullopt,
                    false,
                    cloudID ? MediaAsset::Text{*cloudID} : std::nullopt,
                    std::nullopt};
}

/// Returns a group of the shots that these files form.
inline TransferPlanner::NamedGroup groupOf(const std::string& folder,
                                           const std::vector<MediaAsset>& assets) {
  MediaGroup group;
  group.id = folder;
  group.bundles = BundleBuilder::makeBundles(assets);
  return {folder, std::move(group)};
}

/// Returns a plan of `count` stills in one folder.
inline TransferPlan planOf(std::size_t count, std::uint64_t size,
                           const std::string& folder = "2026-05-20") {
  std::vector<MediaAsset> assets;
  for (std::size_t i = 0; i < count; ++i) {
    assets.push_back(assetOf("100APPLE/IMG_" + std::to_string(1000 + i) + ".HEIC", size));
  }
  return TransferPlanner::plan({groupOf(folder, assets)}, {});
}

/// An in-memory source that delivers contentOf(id) in pieces. `before` and `after` are called
/// around each download and may throw; `bytes` may replace the content of an id; the download of an
/// id in `failing` throws SourceError.
class MemorySource : public MediaSource {
 public:
  std::function<void(const MediaAsset&)> before;
  std::function<void(const MediaAsset&)> after;
  std::map<std::string, std::string> bytes;
  std::map<std::string, SourceError::Kind> failing;
  std::size_t pieceBytes = 256 * 1024;
  int threads = 1;

  void download(const MediaAsset& asset, DownloadDestination& destination) override {
    if (before) before(asset);
    const std::string id{asset.id()};
    if (const auto failure = failing.find(id); failure != failing.end()) {
      throw SourceError{failure->second, std::string{asset.name()}};
    }
    const auto found = bytes.find(id);
    const std::string content =
        found != bytes.end() ? found->second : contentOf(id, asset.sizeBytes());
    for (std::size_t at = 0; at < content.size(); at += pieceBytes) {
      const std::string piece = content.substr(at, pieceBytes);
      destination.append(std::as_bytes(std::span{piece}));
    }
    if (after) after(asset);
  }
  int concurrentDownloads() const override { return threads; }
};

/// Returns the paths of all files below a folder, sorted.
inline std::vector<std::string> filesIn(const std::string& path) {
  std::vector<std::string> paths;
  openFolder(path)->visitAll([&](const std::string& found, const FileStatus& status) {
    if (status.type == FileStatus::Type::file) paths.push_back(found);
  });
  std::sort(paths.begin(), paths.end());
  return paths;
}

inline std::vector<std::string> pathsOf(const TransferPlan& plan) {
  std::vector<std::string> paths;
  for (const PlannedFile& file : plan.files) paths.push_back(file.relativePath);
  return paths;
}

inline std::vector<std::string> kindsOf(const TransferReport& report) {
  std::vector<std::string> kinds;
  for (const FileOutcome& outcome : report.files) kinds.emplace_back(textOf(outcome.kind));
  return kinds;
}

}  // namespace tavrix
