#include "device/thumbnails/ThumbnailJobs.h"

#include <limits>
#include <utility>

namespace tavrix {

using Step = ThumbnailOrder::Step;

ThumbnailJob::Rank ThumbnailJob::rank() const {
  std::pair best{ThumbnailPriority::idle, std::uint64_t{0}};
  for (const auto& [receiver, request] : requests) {
    const bool isBefore = request.priority < best.first ||
                          (request.priority == best.first && request.number > best.second);
    if (isBefore) best = {request.priority, request.number};
  }
  // First every picture of the screen in any quality, then those near it, then the better ones of
  // both, and at last everything else. A whole file takes long, so it comes after quick pictures.
  constexpr int levels[3][3] = {{0, 1, 4}, {2, 3, 5}, {6, 7, 8}};
  const int work = step != Step::sharp ? 0 : quick() == nullptr ? 1 : 2;
  const int level = levels[static_cast<int>(best.first)][work];
  return {level, std::numeric_limits<std::uint64_t>::max() - best.second};
}

ThumbnailJob& ThumbnailJobs::add(const MediaAsset& asset, const ThumbnailKey& key,
                                 const std::shared_ptr<ThumbnailReceiver>& receiver,
                                 ThumbnailPriority priority) {
  const auto [found, isNew] = jobs_.try_emplace(key.text(), ThumbnailJob{asset, key});
  ThumbnailJob& job = found->second;
  if (isNew) job.number = ++lastNumber_;
  const bool wasQueued = job.queued.has_value();
  dequeue(job);
  job.requests[receiver] = {priority, ++lastNumber_};
  if (wasQueued) enqueue(job);
  return job;
}

ThumbnailJob* ThumbnailJobs::find(const std::string& key) {
  const auto found = jobs_.find(key);
  return found == jobs_.end() ? nullptr : &found->second;
}

void ThumbnailJobs::setPriority(const std::string& key,
                                const std::shared_ptr<ThumbnailReceiver>& receiver,
                                ThumbnailPriority priority) {
  ThumbnailJob* const job = find(key);
  if (job == nullptr) return;
  const auto request = job->requests.find(receiver);
  if (request == job->requests.end() || request->second.priority == priority) return;
  const bool wasQueued = job->queued.has_value();
  dequeue(*job);
  request->second = {priority, ++lastNumber_};
  if (wasQueued) enqueue(*job);
}

void ThumbnailJobs::remove(const std::string& key,
                           const std::shared_ptr<ThumbnailReceiver>& receiver) {
  ThumbnailJob* const job = find(key);
  if (job == nullptr || job->requests.count(receiver) == 0) return;
  if (job->requests.size() == 1) return erase(key);
  const bool wasQueued = job->queued.has_value();
  dequeue(*job);
  job->requests.erase(receiver);
  if (wasQueued) enqueue(*job);
}

void ThumbnailJobs::erase(const std::string& key) {
  ThumbnailJob* const job = find(key);
  if (job == nullptr) return;
  dequeue(*job);
  if (job->running) job->running->request_stop();
  jobs_.erase(key);
}

void ThumbnailJobs::clear() {
  while (!jobs_.empty()) erase(std::string{jobs_.begin()->first});
}

void ThumbnailJobs::enqueue(ThumbnailJob& job) {
  job.queued = job.rank();
  queueOf(job).emplace(*job.queued, &job);
}

void ThumbnailJobs::enqueueAllResting() {
  for (auto& [key, job] : jobs_) {
    if (!job.queued && !job.running) enqueue(job);
  }
}

void ThumbnailJobs::stopReading() {
  for (auto& [key, job] : jobs_) {
    if (job.running && job.step != Step::lookUp) job.running->request_stop();
  }
}

ThumbnailJobs::Queue& ThumbnailJobs::queueOf(const ThumbnailJob& job) {
  return job.step == Step::lookUp ? lookUps_ : work_;
}

ThumbnailJob* ThumbnailJobs::takeFirst(Queue& queue) {
  if (queue.empty()) return nullptr;
  ThumbnailJob* const job = queue.begin()->second;
  queue.erase(queue.begin());
  job->queued.reset();
  return job;
}

void ThumbnailJobs::dequeue(ThumbnailJob& job) {
  if (!job.queued) return;
  queueOf(job).erase(*job.queued);
  job.queued.reset();
}

}  // namespace tavrix
