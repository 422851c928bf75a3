#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <tuple>

#include "device/thumbnails/ThumbnailMaking.h"

namespace tavrix {

enum class ThumbnailPriority { onScreen, near, idle };

struct ThumbnailAnswer {
  enum class State {
    shown,        ///< `image` is the picture
    notShowable,  ///< the file has no picture that the program can show
    notNow,       ///< it could not be read; it is tried again when the source is set again
  };
  State state = State::notNow;
  /// Upright, in sRGB. With State::notNow the one shown so far, or null.
  std::shared_ptr<const SmallImage> image{};
  bool isFinal = false;                                   ///< no further answer will come
  std::optional<std::chrono::milliseconds> filmLength{};  ///< see EmbeddedPicture
};

/// The receiver of the answers to one request.
struct ThumbnailReceiver {
  std::function<void(const ThumbnailAnswer&)> answer;
  bool isWanted = true;
  bool hasAnswer = false;
};

/// One picture to make, for all requests of it.
struct ThumbnailJob {
  struct Request {
    ThumbnailPriority priority = ThumbnailPriority::idle;
    std::uint64_t number = 0;  ///< the later, the greater
  };
  /// Its place in a queue: the level, then the latest request first.
  using Rank = std::tuple<int, std::uint64_t>;

  MediaAsset asset;
  ThumbnailKey key;
  std::uint64_t number = 0;  ///< different for each job, also of the same picture
  ThumbnailOrder::Step step = ThumbnailOrder::Step::lookUp;
  std::map<std::shared_ptr<ThumbnailReceiver>, Request> requests{};
  std::optional<ThumbnailAnswer> last{};
  std::optional<std::stop_source> running{};  ///< while a worker has it
  std::optional<Rank> queued{};

  /// Returns the rank that its requests and its state give it.
  Rank rank() const;
  /// Returns the image that was already shown, or nullptr.
  std::shared_ptr<const SmallImage> quick() const { return last ? last->image : nullptr; }
};

/// The jobs of a store by picture, and the order in which they are worked. A job is queued, running
/// or resting; one that rests waits for the source. Used by one thread.
class ThumbnailJobs {
 public:
  /// Returns the job of a picture with a request of `receiver`: an existing one, or a new one that
  /// rests.
  ThumbnailJob& add(const MediaAsset& asset, const ThumbnailKey& key,
                    const std::shared_ptr<ThumbnailReceiver>& receiver, ThumbnailPriority priority);
  /// Returns nullptr if there is no such job.
  ThumbnailJob* find(const std::string& key);
  void setPriority(const std::string& key, const std::shared_ptr<ThumbnailReceiver>& receiver,
                   ThumbnailPriority priority);
  /// Removes a request, and with the last one the job.
  void remove(const std::string& key, const std::shared_ptr<ThumbnailReceiver>& receiver);
  /// Removes a job. Requests a stop if it is running.
  void erase(const std::string& key);
  void clear();

  /// Queues a job that rests.
  void enqueue(ThumbnailJob& job);
  void enqueueAllResting();
  /// Removes the first job from the queue of the jobs that look up, or of the others, and returns
  /// it; nullptr if the queue is empty.
  ThumbnailJob* takeLookUp() { return takeFirst(lookUps_); }
  ThumbnailJob* takeWork() { return takeFirst(work_); }
  /// Requests a stop of all running jobs that read the source.
  void stopReading();

 private:
  using Queue = std::map<ThumbnailJob::Rank, ThumbnailJob*>;

  Queue& queueOf(const ThumbnailJob& job);
  static ThumbnailJob* takeFirst(Queue& queue);
  void dequeue(ThumbnailJob& job);

  std::map<std::string, ThumbnailJob> jobs_;
  Queue lookUps_;
  Queue work_;
  std::uint64_t lastNumber_ = 0;
};

}  // namespace tavrix
