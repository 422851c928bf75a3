#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>

#include "device/thumbnails/PreviewFetching.h"
#include "foundation/tasks/MainLoop.h"

namespace tavrix {

/// A request for a file to view. Its end withdraws the request: no answer comes after it, and a
/// download under way stops. May outlive the PreviewFiles.
class PreviewRequest {
 public:
  PreviewRequest();
  ~PreviewRequest();
  PreviewRequest(PreviewRequest&& other) noexcept;
  PreviewRequest& operator=(PreviewRequest&& other) noexcept;

  void withdraw();

 private:
  friend class PreviewFiles;
  struct Handle;
  explicit PreviewRequest(std::unique_ptr<Handle> handle);

  std::unique_ptr<Handle> handle_;
};

/// Fetches whole files of one phone or folder, photographs and films, so that a viewer can open
/// them under their own names. A file is fetched once and kept until the program ends, or until
/// others need its space (see PreviewFolder). Only the path is given; to open it is up to the
/// interface. One file is fetched at a time, in the order of the requests.
///
/// Used on the main loop only. Files are read and written on a thread of its own. The loop must
/// outlive the object; the destructor stops the download, waits for it and removes all files.
class PreviewFiles {
 public:
  struct Setup {
    MainLoop& loop;
    PreviewFolder::Setup folder;
  };
  using OpenMedia = PreviewOrder::OpenMedia;
  /// As for ThumbnailStore: returns the absolute path of the copy of an asset, or nullopt if it has
  /// not landed yet. Called on the main loop, so it must not read the disk.
  using LandedFiles = std::function<std::optional<std::string>(const MediaAsset&)>;

  struct Progress {
    std::uint64_t received = 0;  ///< bytes
    std::uint64_t total = 0;

    friend bool operator==(const Progress&, const Progress&) = default;
  };
  struct Receiver {
    std::function<void(const PreviewResult&)> answer;         ///< called once
    std::function<void(const Progress&)> progress = nullptr;  ///< called before; may be empty
  };

  /// Also removes, on the thread, what processes that were killed have left.
  explicit PreviewFiles(Setup setup);
  ~PreviewFiles();
  PreviewFiles(const PreviewFiles&) = delete;
  PreviewFiles& operator=(const PreviewFiles&) = delete;

  /// Sets the phone or folder by its key in the metadata cache. Without `open` it is known but not
  /// on the cable: only kept files answer, and other requests fail with noSource. With another key,
  /// all requests so far fail with noSource. `open` is called on the thread.
  void setSource(const std::string& key, OpenMedia open);

  /// From now on the source belongs to the transfer: a download under way stops. Requests are
  /// answered with kept files and with those that have landed; others wait.
  void beginTransfer(LandedFiles landed);
  /// Looks again for the files of requests that wait.
  void landedFilesChanged();
  void endTransfer();

  /// Requests the path of an asset of the source. The receiver is called on the main loop, never
  /// during this call.
  [[nodiscard]] PreviewRequest request(const MediaAsset& asset, Receiver receiver);

  /// Returns the ids of the assets whose requests have no answer yet.
  std::set<std::string> openingAssets() const;

 private:
  friend class PreviewRequest;
  class Desk;

  std::shared_ptr<Desk> desk_;
};

}  // namespace tavrix
