#include "grouping/GroupFaces.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <utility>

namespace tavrix {
namespace {

using Face = GroupFaces::Face;
using Milliseconds = std::int64_t;

constexpr Milliseconds moment = std::chrono::milliseconds{GroupFaces::moment}.count();
constexpr Milliseconds farAway = std::numeric_limits<Milliseconds>::max();

/// A shot that may become a face. Small, so that the passes over a large group stay in the cache.
struct Candidate {
  Milliseconds time = 0;
  Milliseconds distance = farAway;  ///< from the nearest face
  std::uint32_t shot = 0;
  Face::Kind kind = Face::Kind::photograph;
  bool isChosen = false;
};

Face::Kind kindOf(const MediaAsset& picture) {
  if (picture.kind() == MediaKind::video) return Face::Kind::film;
  return picture.isScreenshot() ? Face::Kind::screenshot : Face::Kind::photograph;
}

std::vector<Candidate> candidatesOf(const std::vector<AssetBundle>& shots) {
  std::vector<Candidate> candidates;
  candidates.reserve(shots.size());
  Milliseconds last = 0;
  for (std::size_t i = 0; i < shots.size(); ++i) {
    const MediaAsset& picture = shots[i].primaryPicture();
    if (!shots[i].isPicture(picture)) continue;
    const auto date = picture.captureDate();
    // One millisecond after the other, undated shots are of one moment, and yet those that are far
    // apart in the catalogue are far apart.
    last = date ? date->time_since_epoch().count() : last + 1;
    candidates.push_back({last, farAway, static_cast<std::uint32_t>(i), kindOf(picture), false});
  }
  return candidates;
}

/// Returns true if `a` is the better next face.
bool isBetter(const Candidate& a, const Candidate& b) {
  const bool isApart = a.distance >= moment;
  if (isApart != (b.distance >= moment)) return isApart;
  return a.kind != b.kind ? a.kind < b.kind : a.distance > b.distance;
}

/// Returns the next face after `last`, or the first one if it is nullptr. Returns nullptr if no
/// candidate is left.
Candidate* nextOf(std::vector<Candidate>& candidates, const Candidate* last) {
  Candidate* best = nullptr;
  for (Candidate& each : candidates) {
    if (each.isChosen) continue;
    if (last != nullptr) each.distance = std::min(each.distance, std::abs(each.time - last->time));
    if (best == nullptr || isBetter(each, *best)) best = &each;
  }
  return best;
}

}  // namespace

const MediaAsset& shownFile(const AssetBundle& shot) {
  const MediaAsset& primary = shot.primaryPicture();
  if (!shot.hasEditedVersion()) return primary;
  const auto& files = shot.assets();
  const auto edited = std::find_if(files.begin(), files.end(), [&](const MediaAsset& file) {
    return file.isEditedVariant() && file.kind() == primary.kind();
  });
  return edited == files.end() ? primary : *edited;
}

GroupFaces GroupFaces::of(const std::vector<AssetBundle>& shots, std::size_t most) {
  GroupFaces result;
  std::vector<Candidate> candidates = candidatesOf(shots);
  const std::size_t pictured = candidates.size();
  const auto isOf = [](Face::Kind kind) {
    return [kind](const Candidate& each) { return each.kind == kind; };
  };
  if (std::any_of(candidates.begin(), candidates.end(), isOf(Face::Kind::photograph))) {
    std::erase_if(candidates, isOf(Face::Kind::screenshot));
  }
  Candidate* next = nullptr;
  while (result.faces.size() < most) {
    next = nextOf(candidates, next);
    if (next == nullptr) break;
    next->isChosen = true;
    result.faces.push_back({shownFile(shots[next->shot]), next->shot, next->kind});
  }
  std::sort(result.faces.begin(), result.faces.end(), [](const Face& a, const Face& b) {
    return std::pair{a.kind, a.shot} < std::pair{b.kind, b.shot};
  });
  result.otherShots = pictured - result.faces.size();
  return result;
}

}  // namespace tavrix
