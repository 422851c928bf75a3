#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "places/GeocodingCache.h"

namespace tavrix {

/// Knows the names of place cells: from a cache, and for new cells from a geocoder, which a thread
/// in the background asks one cell after another. Safe to use from several threads.
class PlaceDirectory {
 public:
  /// Called by the background thread each time it has run out of work, when it has learnt
  /// something.
  using Listener = std::function<void()>;

  /// Begins with what `cache` holds, as far as it came from the same source and is not full.
  PlaceDirectory(std::unique_ptr<const Geocoder> geocoder, GeocodingCache cache,
                 Listener listener = {});
  /// Work that has not begun is dropped.
  ~PlaceDirectory();
  PlaceDirectory(const PlaceDirectory&) = delete;
  PlaceDirectory& operator=(const PlaceDirectory&) = delete;

  /// What is known of a cell in the language of a locale.
  std::optional<GeocodedPlace> find(const std::string& placeKey, const std::string& localeID) const;
  /// Puts cells into the queue, except those that are known or waiting. A cell that the geocoder
  /// could not tell is asked for again only when it is requested again.
  void request(const std::vector<std::string>& placeKeys, const std::string& localeID);
  /// Returns when the queue is empty and the geocoder at rest.
  void wait();

  /// Those of the geocoder; they hold as long as the directory lives.
  Borders borders() const { return geocoder_->borders(); }

  /// All that is known now, to be kept.
  GeocodingCache cache() const;
  /// Whether anything was learnt that the cache did not know at the beginning.
  bool hasLearnt() const;

 private:
  struct Job {
    std::string language;
    std::string placeKey;
    std::string localeID;
  };

  void work(const std::stop_token& stop);
  void learn(const Job& job, const std::optional<GeocodedPlace>& answer);
  bool knows(const std::string& language, const std::string& placeKey) const;

  std::unique_ptr<const Geocoder> geocoder_;
  Listener listener_;
  mutable std::mutex mutex_;
  std::condition_variable_any changed_;
  GeocodingCache cache_;
  std::deque<Job> queue_;
  std::set<std::pair<std::string, std::string>>
      waiting_;  ///< language and key, also of the one at work
  bool hasLearnt_ = false;
  bool hasNews_ = false;
  std::jthread worker_;  ///< the last member: it uses the others
};

}  // namespace tavrix
