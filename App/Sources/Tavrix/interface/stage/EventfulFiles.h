#pragma once

#include <atomic>
#include <memory>
#include <stop_token>

#include "model/ConnectedSource.h"

namespace tavrix::window {

/// The files of a source, of which a download meets a planned event.
class EventfulFiles : public SourceFiles {
 public:
  enum class Event {
    none,
    leaves,  ///< the source leaves at a file
    holds,   ///< it leaves, and when it is opened again, a download waits until it is stopped
    fails,   ///< every ninth file cannot be read
  };

  using Bytes = std::atomic<std::uint64_t>;

  /// `filesBefore` is the number of files that are delivered before the source leaves.
  /// Adds to `delivered` the number of bytes that were downloaded.
  EventfulFiles(std::shared_ptr<const SourceFiles> files, Event event, std::uint64_t filesBefore,
                std::shared_ptr<Bytes> delivered);

  std::unique_ptr<MediaSource> openMedia(AwaitPhone awaitPhone,
                                         std::stop_token stop) const override;
  std::optional<PictureAccess> pictures() const override { return files_->pictures(); }
  /// Returns true: a source that left stays away.
  bool reportLost() const override { return true; }

  /// Returns true once a download waits. Callable from any thread.
  bool isHolding() const { return counts_->isHolding; }

 private:
  struct Counts {
    std::atomic<std::uint64_t> files = 0;
    std::shared_ptr<Bytes> bytes;
    std::atomic<int> openings = 0;
    std::atomic<bool> isHolding = false;
  };
  class Media;

  std::shared_ptr<const SourceFiles> files_;
  Event event_;
  std::uint64_t filesBefore_;
  std::shared_ptr<Counts> counts_ = std::make_shared<Counts>();
};

}  // namespace tavrix::window
