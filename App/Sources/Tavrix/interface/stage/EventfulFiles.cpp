#include "interface/stage/EventfulFiles.h"

#include <cerrno>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace tavrix::window {
namespace {

void waitFor(const std::stop_token& stop) {
  std::mutex mutex;
  std::unique_lock lock{mutex};
  std::condition_variable_any().wait(lock, stop, [] { return false; });
}

}  // namespace

class EventfulFiles::Media : public MediaSource {
 public:
  Media(const EventfulFiles& files, std::unique_ptr<MediaSource> media, std::stop_token stop)
      : event_(files.event_),
        filesBefore_(files.filesBefore_),
        isFirst_(files.counts_->openings++ == 0),
        counts_(files.counts_),
        media_(std::move(media)),
        stop_(std::move(stop)) {}

  void download(const MediaAsset& asset, DownloadDestination& destination) override {
    constexpr std::uint64_t failing = 9;
    const std::uint64_t number = counts_->files++;
    const std::string name{asset.name()};
    if (event_ == Event::fails && number % failing == failing - 1) {
      throw SourceError{SourceError::Kind::unreadable, name, EIO};
    }
    const bool leaves = event_ == Event::leaves || event_ == Event::holds;
    if (leaves && number >= filesBefore_) {
      if (event_ == Event::holds && !isFirst_) {
        counts_->isHolding = true;
        waitFor(stop_);
      }
      throw SourceError{SourceError::Kind::disconnected, name};
    }
    media_->download(asset, destination);
    // The window must see the progress before the event, whose pace it shows.
    if (leaves && number % 5 == 4) std::this_thread::sleep_for(std::chrono::milliseconds{150});
    *counts_->bytes += asset.sizeBytes();
  }

 private:
  Event event_;
  std::uint64_t filesBefore_;
  bool isFirst_;
  std::shared_ptr<Counts> counts_;
  std::unique_ptr<MediaSource> media_;
  std::stop_token stop_;
};

EventfulFiles::EventfulFiles(std::shared_ptr<const SourceFiles> files, Event event,
                             std::uint64_t filesBefore, std::shared_ptr<Bytes> delivered)
    : files_(std::move(files)), event_(event), filesBefore_(filesBefore) {
  counts_->bytes = std::move(delivered);
}

std::unique_ptr<MediaSource> EventfulFiles::openMedia(AwaitPhone awaitPhone,
                                                      std::stop_token stop) const {
  return std::make_unique<Media>(*this, files_->openMedia(std::move(awaitPhone), stop), stop);
}

}  // namespace tavrix::window
