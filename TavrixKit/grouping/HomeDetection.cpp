#include "grouping/HomeDetection.h"

#include <algorithm>
#include <tuple>

#include "grouping/DayCount.h"
#include "grouping/GreedyClusters.h"

namespace tavrix::HomeDetection {
namespace {

constexpr std::int64_t fewestRivalDays = 3;

/// The counts of a place while its points are being added.
struct HomeCluster {
  DayCount days;
  DayCount recentDays;
  std::optional<Instant> firstDate;
  std::optional<Instant> lastDate;
};

/// Returns the first moment of the recent span, or nullopt if there is no span.
std::optional<Instant> recentBegin(std::span<const DatedShot> shots, int windowDays) {
  const auto newest = std::find_if(shots.rbegin(), shots.rend(),
                                   [](const DatedShot& shot) { return shot.position.has_value(); });
  if (windowDays <= 0 || newest == shots.rend()) return std::nullopt;
  return newest->date - std::chrono::seconds{86400} * std::int64_t{windowDays};
}

class Clusterer {
 public:
  Clusterer(const GroupingSettings& settings, std::optional<Instant> recentFrom)
      : recentFrom_(recentFrom), places_(settings.homeRadiusKm) {}

  /// Adds a shot, which must have a position.
  void add(const DatedShot& shot) {
    const Instant date = shot.date;
    const std::uint32_t number = places_.add(*shot.position, shot.vector);
    if (number == clusters_.size()) clusters_.emplace_back();
    HomeCluster& cluster = clusters_[number];
    cluster.days.add(shot.day);
    if (recentFrom_ && date >= *recentFrom_) cluster.recentDays.add(shot.day);
    if (!cluster.firstDate) cluster.firstDate = date;
    cluster.lastDate = date;
  }

  std::vector<HomeCandidate> candidates() const {
    std::vector<HomeCandidate> result;
    result.reserve(clusters_.size());
    for (std::uint32_t i = 0; i < clusters_.size(); ++i) {
      const HomeCluster& cluster = clusters_[i];
      const PlaceClustering::UnitVectorSum& sum = places_.sum(i);
      result.push_back({sum.center(places_.firstPoint(i)), cluster.recentDays.count(),
                        cluster.days.count(), sum.count, cluster.firstDate, cluster.lastDate});
    }
    return result;
  }

 private:
  std::optional<Instant> recentFrom_;
  PlaceClustering::GreedyClusters places_;
  std::vector<HomeCluster> clusters_;
};

}  // namespace

std::vector<HomeCandidate> candidates(std::span<const DatedShot> shots,
                                      const GroupingSettings& settings) {
  Clusterer clusterer{settings, recentBegin(shots, settings.homeWindowDays)};
  for (const DatedShot& shot : shots) {
    if (shot.position) clusterer.add(shot);
  }
  std::vector<HomeCandidate> result = clusterer.candidates();
  const auto isBetter = [](const HomeCandidate& a, const HomeCandidate& b) {
    return std::tie(a.recentDays, a.totalDays, a.pointCount) >
           std::tie(b.recentDays, b.totalDays, b.pointCount);
  };
  std::stable_sort(result.begin(), result.end(), isBetter);
  return result;
}

std::vector<HomeCandidate> rivals(const std::vector<HomeCandidate>& candidates,
                                  double tripDistanceKm) {
  std::vector<HomeCandidate> result;
  if (candidates.empty()) return result;
  const HomeCandidate& best = candidates.front();
  const auto isRival = [&](const HomeCandidate& candidate) {
    return candidate.recentDays >= fewestRivalDays && candidate.recentDays * 2 >= best.recentDays &&
           haversineDistanceKm(candidate.center, best.center) > tripDistanceKm;
  };
  std::copy_if(candidates.begin() + 1, candidates.end(), std::back_inserter(result), isRival);
  return result;
}

bool isAmbiguous(const std::vector<HomeCandidate>& candidates, double tripDistanceKm) {
  return !rivals(candidates, tripDistanceKm).empty();
}

std::optional<GeoPoint> home(const std::optional<GeoPoint>& chosen,
                             const std::vector<HomeCandidate>& candidates) {
  if (chosen) return chosen;
  return candidates.empty() ? std::nullopt : std::optional{candidates.front().center};
}

}  // namespace tavrix::HomeDetection
