#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "device/thumbnails/ThumbnailJobs.h"
#include "foundation/tasks/MainLoop.h"

namespace tavrix {

/// A request for a thumbnail. Its end withdraws the request: no answer comes after it, and a
/// picture that nobody else has requested is not made. May outlive the store.
class ThumbnailRequest {
 public:
  ThumbnailRequest();
  ~ThumbnailRequest();
  ThumbnailRequest(ThumbnailRequest&& other) noexcept;
  ThumbnailRequest& operator=(ThumbnailRequest&& other) noexcept;

  /// A request with another priority than before is treated as the latest one.
  void setPriority(ThumbnailPriority priority);
  void withdraw();

 private:
  friend class ThumbnailStore;
  struct Handle;
  explicit ThumbnailRequest(std::unique_ptr<Handle> handle);

  std::unique_ptr<Handle> handle_;
};

/// Makes the thumbnails of one phone or folder, and finds those that were made before. First every
/// picture is shown from the cheapest source; what is smaller than half of the requested size is
/// replaced in idle time. Pictures on the screen come first, then those near it, then others, and
/// among equals the latest request. The same picture is made once for all who want it.
///
/// Used on the main loop only. Files are read and written on threads of the store. The loop must
/// outlive the store; the destructor ends all work and waits for it.
class ThumbnailStore {
 public:
  struct Setup {
    MainLoop& loop;
    ThumbnailMaking::Tools tools;
    /// One for each worker, so two for two pictures at a time. Each is called on one thread.
    std::vector<ThumbnailDecoder> decoders;
  };
  using Receiver = std::function<void(const ThumbnailAnswer&)>;
  /// Returns the absolute path of the copy of an asset, or nullopt if it has not landed yet. Called
  /// on the main loop, so it must not read the disk.
  using LandedFiles = std::function<std::optional<std::string>(const MediaAsset&)>;

  explicit ThumbnailStore(Setup setup);
  ~ThumbnailStore();
  ThumbnailStore(const ThumbnailStore&) = delete;
  ThumbnailStore& operator=(const ThumbnailStore&) = delete;

  /// Sets the phone or folder by its key in the metadata cache. Without `files` it is known but not
  /// on the cable: only the cache answers, and other requests wait until it is set again. With
  /// another key, all requests so far are forgotten.
  void setSource(const std::string& key, std::optional<ThumbnailFiles> files);

  /// From now on the source belongs to the transfer: it is read no more after the range that is
  /// being read. Thumbnails come from the cache and from the files that have landed; other
  /// requests wait.
  void beginTransfer(LandedFiles landed);
  /// Looks again for the files of requests that wait.
  void landedFilesChanged();
  void endTransfer();

  /// Requests the thumbnail of an asset of the source. `answer` is called on the main loop, never
  /// during this call, at first with any picture and later perhaps with a better one.
  [[nodiscard]] ThumbnailRequest request(const MediaAsset& asset, std::uint32_t longestSide,
                                         ThumbnailPriority priority, Receiver answer);

 private:
  friend class ThumbnailRequest;
  class Desk;

  std::shared_ptr<Desk> desk_;
};

}  // namespace tavrix
