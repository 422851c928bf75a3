#include "device/thumbnails/PreviewFiles.h"

#include <algorithm>
#include <atomic>
#include <map>
#include <utility>

#include "device/thumbnails/ThumbnailEntry.h"
#include "foundation/tasks/SerialQueue.h"

namespace tavrix {
namespace {

struct Job {
  MediaAsset asset;
  std::string source;
  PreviewFiles::Receiver receiver;
  std::optional<std::stop_source> running{};  ///< while the worker has it
  bool isResting = false;                     ///< waits for the transfer
};

constexpr PreviewFailure noSource{PreviewFailure::Kind::noSource};

}  // namespace

/// The requests. Everything except the fetching happens on the main loop. Posted tasks hold the
/// desk weakly, so that it ends with its owner.
class PreviewFiles::Desk : public std::enable_shared_from_this<Desk> {
 public:
  explicit Desk(Setup setup)
      : loop_(setup.loop), folder_(std::make_shared<PreviewFolder>(std::move(setup.folder))) {
    worker_.post([folder = folder_] { folder->removeLeftOvers(); });
  }

  void close() {
    for (auto& [number, job] : jobs_) stop(job);
    jobs_.clear();
  }

  void setSource(const std::string& key, OpenMedia open) {
    source_ = key;
    open_ = std::move(open);
    changeConditions();
  }
  void setLanded(std::optional<LandedFiles> landed) {
    landed_ = std::move(landed);
    changeConditions();
  }
  void lookAgain() {
    for (auto& [number, job] : jobs_) job.isResting = false;
    startSoon();
  }

  std::uint64_t add(const MediaAsset& asset, Receiver receiver) {
    jobs_.emplace(++lastNumber_, Job{asset, source_, std::move(receiver)});
    startSoon();
    return lastNumber_;
  }
  void remove(std::uint64_t number) {
    const auto found = jobs_.find(number);
    if (found == jobs_.end()) return;
    stop(found->second);
    jobs_.erase(found);
  }

  std::set<std::string> openingAssets() const {
    std::set<std::string> ids;
    for (const auto& [number, job] : jobs_) ids.emplace(job.asset.id());
    return ids;
  }

 private:
  /// The progress of one download. The worker posts it only if the last one was received, so that
  /// the loop gets no more of it than it can take.
  struct Meter {
    std::atomic<std::uint64_t> bytes = 0;
    std::atomic<bool> isPosted = false;
  };
  using Jobs = std::map<std::uint64_t, Job>;

  static void stop(Job& job) {
    if (job.running) job.running->request_stop();
  }

  /// A download under way is of the source as it was before.
  void changeConditions() {
    for (auto& [number, job] : jobs_) stop(job);
    lookAgain();
  }

  void startSoon() {
    if (std::exchange(isStartPosted_, true)) return;
    loop_.post([weak = weak_from_this()] {
      const auto self = weak.lock();
      if (self == nullptr) return;
      self->isStartPosted_ = false;
      self->start();
    });
  }

  /// Answers what can be answered at once, and gives the worker the next job.
  void start() {
    while (!isBusy_) {
      const auto next = std::find_if(jobs_.begin(), jobs_.end(), [](const auto& each) {
        return !each.second.isResting && !each.second.running;
      });
      if (next == jobs_.end()) return;
      const Job& job = next->second;
      const bool isFormer = job.source != source_;
      const auto landed = landed_ && !isFormer ? (*landed_)(job.asset) : std::nullopt;
      if (landed) {
        finish(next, *landed);
      } else if (isFormer) {
        finish(next, noSource);
      } else {
        run(next->first, next->second);
      }
    }
  }

  void run(std::uint64_t number, Job& job) {
    isBusy_ = true;
    PreviewOrder order{job.asset, ThumbnailKey::of(job.asset, job.source, 0).text()};
    if (!landed_) order.open = open_;
    order.stop = job.running.emplace().get_token();
    if (job.receiver.progress) order.received = meterOf(number);
    worker_.post([weak = weak_from_this(), &loop = loop_, folder = folder_, number,
                  order = std::move(order)] {
      loop.post([weak, number, result = fetchPreview(*folder, order)] {
        if (const auto self = weak.lock()) self->land(number, result);
      });
    });
  }

  std::function<void(std::uint64_t)> meterOf(std::uint64_t number) {
    return [weak = weak_from_this(), &loop = loop_, number,
            meter = std::make_shared<Meter>()](std::uint64_t bytes) {
      meter->bytes = bytes;
      if (meter->isPosted.exchange(true)) return;
      loop.post([weak, number, meter] {
        meter->isPosted = false;
        if (const auto self = weak.lock()) self->report(number, meter->bytes);
      });
    };
  }

  void report(std::uint64_t number, std::uint64_t bytes) {
    const auto found = jobs_.find(number);
    if (found == jobs_.end()) return;
    // The receiver may withdraw its request.
    const auto progress = found->second.receiver.progress;
    progress({bytes, found->second.asset.sizeBytes()});
  }

  void land(std::uint64_t number, const std::optional<PreviewResult>& result) {
    isBusy_ = false;
    const auto found = jobs_.find(number);
    if (found != jobs_.end()) conclude(found, result);
    start();
  }

  void conclude(Jobs::iterator found, const std::optional<PreviewResult>& result) {
    Job& job = found->second;
    const bool wasStopped = job.running->stop_requested();
    job.running.reset();
    if (result) return finish(found, *result);
    if (wasStopped) return;  // it is tried again under the new conditions
    if (landed_) {
      job.isResting = true;
    } else if (open_ == nullptr) {
      finish(found, noSource);
    }
  }

  void finish(Jobs::iterator found, const PreviewResult& result) {
    // The receiver may make and withdraw requests, and end the owner.
    const auto answer = std::move(found->second.receiver.answer);
    jobs_.erase(found);
    answer(result);
  }

  MainLoop& loop_;
  std::shared_ptr<PreviewFolder> folder_;
  std::string source_;
  OpenMedia open_;
  std::optional<LandedFiles> landed_;
  Jobs jobs_;
  std::uint64_t lastNumber_ = 0;
  bool isStartPosted_ = false;
  bool isBusy_ = false;
  SerialQueue worker_;  ///< ends first
};

struct PreviewRequest::Handle {
  std::weak_ptr<PreviewFiles::Desk> desk;
  std::uint64_t number = 0;
};

PreviewRequest::PreviewRequest(std::unique_ptr<Handle> handle) : handle_(std::move(handle)) {}
PreviewRequest::PreviewRequest() = default;
PreviewRequest::~PreviewRequest() { withdraw(); }
PreviewRequest::PreviewRequest(PreviewRequest&& other) noexcept = default;

PreviewRequest& PreviewRequest::operator=(PreviewRequest&& other) noexcept {
  if (this != &other) {
    withdraw();
    handle_ = std::move(other.handle_);
  }
  return *this;
}

void PreviewRequest::withdraw() {
  const auto handle = std::move(handle_);
  const auto desk = handle == nullptr ? nullptr : handle->desk.lock();
  if (desk != nullptr) desk->remove(handle->number);
}

PreviewFiles::PreviewFiles(Setup setup) : desk_(std::make_shared<Desk>(std::move(setup))) {}

PreviewFiles::~PreviewFiles() { desk_->close(); }

void PreviewFiles::setSource(const std::string& key, OpenMedia open) {
  desk_->setSource(key, std::move(open));
}
void PreviewFiles::beginTransfer(LandedFiles landed) { desk_->setLanded(std::move(landed)); }
void PreviewFiles::landedFilesChanged() { desk_->lookAgain(); }
void PreviewFiles::endTransfer() { desk_->setLanded(std::nullopt); }

PreviewRequest PreviewFiles::request(const MediaAsset& asset, Receiver receiver) {
  auto handle = std::make_unique<PreviewRequest::Handle>();
  handle->desk = desk_;
  handle->number = desk_->add(asset, std::move(receiver));
  return PreviewRequest{std::move(handle)};
}

std::set<std::string> PreviewFiles::openingAssets() const { return desk_->openingAssets(); }

}  // namespace tavrix
