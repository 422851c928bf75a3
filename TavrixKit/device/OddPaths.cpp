#include "device/OddPaths.h"

#include "media/Snapshot.h"

namespace tavrix {

bool OddPaths::mayConcern(std::string_view id) {
  constexpr std::string_view replacement = "\xEF\xBF\xBD";
  return id.find(replacement) != std::string_view::npos || id.find('#') != std::string_view::npos;
}

OddPaths::OddPaths(const SourceFolder::Listing& listing) {
  const auto assets = Snapshot::assetsOf(listing.items, TimeZone::utc());
  for (std::size_t i = 0; i < assets.size(); ++i) {
    if (assets[i].id() != listing.paths[i]) paths_[assets[i].id()] = listing.paths[i];
  }
}

std::string OddPaths::pathOf(std::string_view id) const {
  const auto found = paths_.find(id);
  return found == paths_.end() ? std::string{id} : found->second;
}

}  // namespace tavrix
