#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "foundation/GeoPoint.h"
#include "transfer/TransferPlan.h"

namespace tavrix::bench {

/// Writes the snapshot of a synthetic phone with `files` files over fifteen years: stills, Live
/// Photos, edited shots with sidecars, videos. Four of five have a position near one of 2,000
/// places.
void writeSnapshot(const std::string& path, std::size_t files);

/// Fills bytes with incompressible noise, continuing from a state.
void fillWithNoise(std::string& bytes, std::uint64_t& state);

/// Returns points scattered within about a kilometre around `places` places.
std::vector<GeoPoint> scatteredPoints(std::size_t count, std::size_t places);

/// Fifteen years of shots. Shots come in bursts, the events; a trip is a series of events at one
/// place away from home. Trips are spread evenly and visit the places in turn.
struct TravelPlan {
  std::size_t shots = 0;
  std::size_t events = 0;
  std::size_t trips = 0;
  std::size_t places = 0;  ///< the destinations of trips
};
/// Returns the stills in capture order; nine of ten have a position.
std::vector<MediaAsset> travels(const TravelPlan& plan);

/// Returns the plan for the assets, computed with all steps from catalogue to plan.
TransferPlan planOf(const std::vector<MediaAsset>& assets);
std::vector<MediaAsset> readCatalogue(const std::string& path);

}  // namespace tavrix::bench
