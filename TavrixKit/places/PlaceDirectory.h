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

/// Holds the names of place cells. They come from a cache and, for new cells, from a geocoder,
/// which a background thread asks for one cell after another. Safe to use from several threads.
class PlaceDirectory {
 public:
  /// Called by the background thread each time its queue becomes empty, if it has learnt new names
  /// since the last call.
  using Listener = std::function<void()>;

  /// Starts with the cells of `cache` if they come from the same source, without languages that are
  /// full.
  PlaceDirectory(std::unique_ptr<const Geocoder> geocoder, GeocodingCache cache,
                 Listener listener = {});
  /// Drops work that has not begun.
  ~PlaceDirectory();
  PlaceDirectory(const PlaceDirectory&) = delete;
  PlaceDirectory& operator=(const PlaceDirectory&) = delete;

  /// Returns the known place of a cell in the language of a locale, or nullopt if it is not known.
  std::optional<GeocodedPlace> find(const std::string& placeKey, const std::string& localeID) const;
  /// Adds cells to the queue, except those that are known or already waiting. If the geocoder could
  /// not name a cell, it is asked again only when the cell is requested again.
  void request(const std::vector<std::string>& placeKeys, const std::string& localeID);
  /// Waits until the queue is empty and the geocoder is idle.
  void wait();

  /// Returns the quarter of a large city that a point is in, as the geocoder knows it.
  std::optional<GeocodedDistrict> districtAt(const GeoPoint& point,
                                             const std::string& localeID) const {
    return geocoder_->districtAt(point, localeID);
  }
  /// Returns the identifier of the time zone at a point, or nullopt if it is not known.
  std::optional<std::string> zoneIDAt(const GeoPoint& point) const {
    return geocoder_->zoneIDAt(point);
  }
  /// Returns the borders of the geocoder. They are valid as long as the directory exists.
  Borders borders() const { return geocoder_->borders(); }

  /// Returns everything that is known now, for storing.
  GeocodingCache cache() const;
  /// Returns true if the directory has learnt anything that the initial cache did not have.
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
      waiting_;  ///< language and key, including the cell being resolved
  bool hasLearnt_ = false;
  bool hasNews_ = false;
  std::jthread worker_;  ///< the last member, because it uses the others
};

}  // namespace tavrix
