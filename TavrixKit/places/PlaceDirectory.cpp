#include "places/PlaceDirectory.h"

#include <utility>

#include "places/PlaceCells.h"

namespace tavrix {

PlaceDirectory::PlaceDirectory(std::unique_ptr<const Geocoder> geocoder, GeocodingCache cache,
                               Listener listener)
    : geocoder_(std::move(geocoder)), listener_(std::move(listener)), cache_(std::move(cache)) {
  if (cache_.source != geocoder_->source()) cache_ = {geocoder_->source(), {}};
  // In a full language it is unknown which cells are still needed, so it starts empty.
  std::erase_if(cache_.languages, [](const auto& language) {
    return language.second.size() >= GeocodingCache::largestCellCount;
  });
  worker_ = std::jthread{[this](const std::stop_token& stop) { work(stop); }};
}

PlaceDirectory::~PlaceDirectory() = default;

bool PlaceDirectory::knows(const std::string& language, const std::string& placeKey) const {
  const auto cells = cache_.languages.find(language);
  return cells != cache_.languages.end() && cells->second.contains(placeKey);
}

std::optional<GeocodedPlace> PlaceDirectory::find(const std::string& placeKey,
                                                  const std::string& localeID) const {
  const std::lock_guard lock{mutex_};
  const auto cells = cache_.languages.find(cacheLanguage(localeID));
  if (cells == cache_.languages.end()) return std::nullopt;
  const auto found = cells->second.find(placeKey);
  return found == cells->second.end() ? std::nullopt : std::optional{found->second};
}

void PlaceDirectory::request(const std::vector<std::string>& placeKeys,
                             const std::string& localeID) {
  const std::string language = cacheLanguage(localeID);
  {
    const std::lock_guard lock{mutex_};
    for (const std::string& key : placeKeys) {
      if (knows(language, key) || !waiting_.emplace(language, key).second) continue;
      queue_.push_back({language, key, localeID});
    }
  }
  changed_.notify_all();
}

void PlaceDirectory::wait() {
  std::unique_lock lock{mutex_};
  changed_.wait(lock, [&] { return waiting_.empty(); });
}

GeocodingCache PlaceDirectory::cache() const {
  const std::lock_guard lock{mutex_};
  return cache_;
}

bool PlaceDirectory::hasLearnt() const {
  const std::lock_guard lock{mutex_};
  return hasLearnt_;
}

void PlaceDirectory::learn(const Job& job, const std::optional<GeocodedPlace>& answer) {
  if (!answer) return;
  cache_.languages[job.language][job.placeKey] = *answer;
  hasLearnt_ = hasNews_ = true;
}

void PlaceDirectory::work(const std::stop_token& stop) {
  std::unique_lock lock{mutex_};
  while (changed_.wait(lock, stop, [&] { return !queue_.empty(); })) {
    if (stop.stop_requested()) return;
    const Job job = std::move(queue_.front());
    queue_.pop_front();
    lock.unlock();
    const auto center = PlaceCells::centerOf(job.placeKey);
    const auto answer = center ? geocoder_->resolve(*center, job.localeID) : std::nullopt;
    lock.lock();
    learn(job, answer);
    waiting_.erase({job.language, job.placeKey});
    if (!waiting_.empty()) continue;
    changed_.notify_all();
    if (!std::exchange(hasNews_, false) || !listener_) continue;
    lock.unlock();
    listener_();
    lock.lock();
  }
}

}  // namespace tavrix
