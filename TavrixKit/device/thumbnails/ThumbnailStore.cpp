#include "device/thumbnails/ThumbnailStore.h"

#include <utility>

#include "foundation/tasks/SerialQueue.h"
#include "media/MediaKind.h"

namespace tavrix {

using Step = ThumbnailOrder::Step;
using Kind = ThumbnailOutcome::Kind;
using State = ThumbnailAnswer::State;
using ReceiverHandle = std::shared_ptr<ThumbnailReceiver>;

/// The state of a store. Everything except the making of orders happens on the main loop. Posted
/// tasks hold it weakly, so that it ends with the store.
class ThumbnailStore::Desk : public std::enable_shared_from_this<Desk> {
 public:
  explicit Desk(Setup setup)
      : loop_(setup.loop),
        making_(std::make_shared<const ThumbnailMaking>(std::move(setup.tools))) {
    for (ThumbnailDecoder& decoder : setup.decoders) {
      workers_.push_back(std::make_unique<Worker>());
      workers_.back()->decoder = std::move(decoder);
    }
  }

  void close() {
    shutdown_.request_stop();
    jobs_.clear();
  }

  void setSource(const std::string& key, std::shared_ptr<const ThumbnailFiles> files) {
    if (key != source_) jobs_.clear();
    source_ = key;
    files_ = std::move(files);
    // A read under way is of the files as they were before.
    if (!landed_) jobs_.stopReading();
    resume();
  }

  void setLanded(std::optional<LandedFiles> landed) {
    if (landed_.has_value() != landed.has_value()) jobs_.stopReading();
    landed_ = std::move(landed);
    resume();
  }

  void resume() {
    jobs_.enqueueAllResting();
    start();
  }

  std::string add(const MediaAsset& asset, std::uint32_t longestSide, ThumbnailPriority priority,
                  const ReceiverHandle& receiver) {
    const ThumbnailKey key = ThumbnailKey::of(asset, source_, longestSide);
    if (!isPictureKind(asset.kind())) {
      const ThumbnailAnswer answer{State::notShowable, nullptr, true};
      loop_.post([receiver, answer] { give(receiver, answer); });
      return key.text();
    }
    ThumbnailJob& job = jobs_.add(asset, key, receiver, priority);
    if (job.quick() != nullptr) {
      loop_.post([receiver, answer = *job.last] {
        // A better answer may have come first.
        if (!receiver->hasAnswer) give(receiver, answer);
      });
    }
    if (!job.queued && !job.running) jobs_.enqueue(job);
    startSoon();
    return key.text();
  }

  void setPriority(const std::string& key, const ReceiverHandle& receiver,
                   ThumbnailPriority priority) {
    jobs_.setPriority(key, receiver, priority);
  }

  void remove(const std::string& key, const ReceiverHandle& receiver) {
    jobs_.remove(key, receiver);
  }

 private:
  struct Worker {
    ThumbnailDecoder decoder;
    bool isPrepared = false;  ///< used by the queue only
    bool isBusy = false;
    SerialQueue queue;
  };

  static void give(const ReceiverHandle& receiver, const ThumbnailAnswer& answer) {
    if (!receiver->isWanted) return;
    receiver->hasAnswer = true;
    receiver->answer(answer);
  }

  /// Begins work after the requests of this turn of the loop, so that the order of a whole screen
  /// is known.
  void startSoon() {
    if (std::exchange(isStartPosted_, true)) return;
    loop_.post([weak = weak_from_this()] {
      const auto self = weak.lock();
      if (self == nullptr) return;
      self->isStartPosted_ = false;
      self->start();
    });
  }

  void start() {
    startLookUp();
    for (const auto& worker : workers_) {
      while (!worker->isBusy) {
        ThumbnailJob* const job = jobs_.takeWork();
        if (job == nullptr) return;
        if (auto order = orderOf(*job)) run(*worker, *job, *std::move(order));
      }
    }
  }

  void startLookUp() {
    ThumbnailJob* const job = isLookingUp_ ? nullptr : jobs_.takeLookUp();
    if (job == nullptr) return;
    isLookingUp_ = true;
    job->running.emplace();
    lookUps_.post([weak = weak_from_this(), &loop = loop_, making = making_, key = job->key,
                   number = job->number] {
      loop.post([weak, text = key.text(), number, outcome = making->lookUp(key)] {
        const auto self = weak.lock();
        if (self == nullptr) return;
        self->isLookingUp_ = false;
        self->land(text, number, outcome);
      });
    });
  }

  /// Returns nullopt if there is nothing to read now; the job then rests.
  std::optional<ThumbnailOrder> orderOf(const ThumbnailJob& job) const {
    ThumbnailOrder order{.asset = job.asset, .key = job.key, .step = job.step};
    order.quick = job.quick();
    order.shutdown = shutdown_.get_token();
    if (landed_) {
      order.landedPath = (*landed_)(job.asset);
    } else {
      order.files = files_;
    }
    if (!order.landedPath && order.files == nullptr) return std::nullopt;
    return order;
  }

  void run(Worker& worker, ThumbnailJob& job, ThumbnailOrder order) {
    worker.isBusy = true;
    order.unwanted = job.running.emplace().get_token();
    worker.queue.post([weak = weak_from_this(), &loop = loop_, making = making_, &worker,
                       order = std::move(order), number = job.number] {
      if (!std::exchange(worker.isPrepared, true) && worker.decoder.prepare) {
        worker.decoder.prepare();
      }
      const ThumbnailOutcome outcome = making->make(order, worker.decoder.decode);
      loop.post([weak, &worker, text = order.key.text(), number, outcome] {
        const auto self = weak.lock();
        if (self == nullptr) return;
        worker.isBusy = false;
        self->land(text, number, outcome);
      });
      // After the answer: nobody waits for it.
      making->trimCache();
    });
  }

  void land(const std::string& key, std::uint64_t number, const ThumbnailOutcome& outcome) {
    ThumbnailJob* const job = jobs_.find(key);
    if (job != nullptr && job->number == number) conclude(key, *job, outcome);
    start();
  }

  void conclude(const std::string& key, ThumbnailJob& job, const ThumbnailOutcome& outcome) {
    const bool wasStopped = job.running->stop_requested();
    job.running.reset();
    switch (outcome.kind) {
      case Kind::final:
        return finish(key, job, {State::shown, outcome.image, true, outcome.filmLength});
      case Kind::notShowable:
        return finish(key, job, {ThumbnailAnswer::State::notShowable, nullptr, true});
      case Kind::preliminary: {
        const ThumbnailAnswer shown{State::shown, outcome.image, false, outcome.filmLength};
        job.last = shown;
        job.step = Step::sharp;
        jobs_.enqueue(job);
        return answer(job, shown);
      }
      case Kind::absent:
        job.step = job.step == Step::lookUp ? Step::quick : Step::sharp;
        return jobs_.enqueue(job);
      case Kind::stopped:
        return jobs_.enqueue(job);
      case Kind::notNow:
        // If the source was just taken away, the next one is to be asked. A failed copy is not
        // read again; the source is, when the transfer ends. The job rests.
        if (wasStopped) return jobs_.enqueue(job);
        if (!landed_) answer(job, {State::notNow, job.quick(), false});
        return;
    }
  }

  void finish(const std::string& key, ThumbnailJob& job, const ThumbnailAnswer& last) {
    const auto receivers = std::move(job.requests);
    jobs_.erase(key);
    for (const auto& [receiver, request] : receivers) give(receiver, last);
  }

  /// The receivers may make and withdraw requests, so `job` may end meanwhile.
  static void answer(const ThumbnailJob& job, const ThumbnailAnswer& given) {
    const auto receivers = job.requests;
    for (const auto& [receiver, request] : receivers) give(receiver, given);
  }

  MainLoop& loop_;
  std::shared_ptr<const ThumbnailMaking> making_;
  std::string source_;
  std::shared_ptr<const ThumbnailFiles> files_;
  std::optional<LandedFiles> landed_;
  ThumbnailJobs jobs_;
  bool isStartPosted_ = false;
  bool isLookingUp_ = false;
  std::stop_source shutdown_;
  // The threads end first.
  SerialQueue lookUps_;
  std::vector<std::unique_ptr<Worker>> workers_;
};

struct ThumbnailRequest::Handle {
  std::weak_ptr<ThumbnailStore::Desk> desk;
  std::string key;
  ReceiverHandle receiver;
};

ThumbnailRequest::ThumbnailRequest(std::unique_ptr<Handle> handle) : handle_(std::move(handle)) {}
ThumbnailRequest::ThumbnailRequest() = default;
ThumbnailRequest::~ThumbnailRequest() { withdraw(); }
ThumbnailRequest::ThumbnailRequest(ThumbnailRequest&& other) noexcept = default;

ThumbnailRequest& ThumbnailRequest::operator=(ThumbnailRequest&& other) noexcept {
  if (this != &other) {
    withdraw();
    handle_ = std::move(other.handle_);
  }
  return *this;
}

void ThumbnailRequest::setPriority(ThumbnailPriority priority) {
  const auto desk = handle_ == nullptr ? nullptr : handle_->desk.lock();
  if (desk != nullptr) desk->setPriority(handle_->key, handle_->receiver, priority);
}

void ThumbnailRequest::withdraw() {
  const auto handle = std::move(handle_);
  if (handle == nullptr) return;
  handle->receiver->isWanted = false;
  if (const auto desk = handle->desk.lock()) desk->remove(handle->key, handle->receiver);
}

ThumbnailStore::ThumbnailStore(Setup setup) : desk_(std::make_shared<Desk>(std::move(setup))) {}

ThumbnailStore::~ThumbnailStore() { desk_->close(); }

void ThumbnailStore::setSource(const std::string& key, std::optional<ThumbnailFiles> files) {
  desk_->setSource(key,
                   files ? std::make_shared<const ThumbnailFiles>(*std::move(files)) : nullptr);
}

void ThumbnailStore::beginTransfer(LandedFiles landed) { desk_->setLanded(std::move(landed)); }
void ThumbnailStore::landedFilesChanged() { desk_->resume(); }
void ThumbnailStore::endTransfer() { desk_->setLanded(std::nullopt); }

ThumbnailRequest ThumbnailStore::request(const MediaAsset& asset, std::uint32_t longestSide,
                                         ThumbnailPriority priority, Receiver answer) {
  auto receiver = std::make_shared<ThumbnailReceiver>();
  receiver->answer = std::move(answer);
  auto handle = std::make_unique<ThumbnailRequest::Handle>();
  handle->desk = desk_;
  handle->key = desk_->add(asset, longestSide, priority, receiver);
  handle->receiver = std::move(receiver);
  return ThumbnailRequest{std::move(handle)};
}

}  // namespace tavrix
