#include "transfer/TwinAssignment.h"

#include <array>
#include <optional>

#include "foundation/Text.h"
#include "foundation/files/AtomicFile.h"
#include "media/ParsedName.h"
#include "transfer/FileNames.h"

namespace tavrix {
namespace {

constexpr std::size_t nobody = SIZE_MAX;

/// Returns the part of a long name that remains under any number, with the extension; empty for a
/// shorter name, which no number shortens.
std::string uncutPart(std::string_view name) {
  constexpr std::size_t longestNumber = std::string_view{" (18446744073709551615)"}.size();
  if (name.size() + longestNumber <= longestFileName) return {};
  const std::string_view stem = BundleBuilder::splitFileName(name).stem;
  const std::string_view extension = name.substr(stem.size());
  if (extension.size() + 2 * longestNumber > longestFileName) return {};
  const std::size_t kept = longestFileName - extension.size() - 2 * longestNumber;
  return std::string{stem.substr(0, kept)}.append(extension);
}

class Twins {
 public:
  Twins(const std::vector<MediaAsset>& assets, const PlannedAssets& planned,
        const StringSet& copied)
      : assets_(assets), planned_(planned), isTaken_(assets.size(), false) {
    for (std::size_t i = 0; i < assets.size(); ++i) {
      isTaken_[i] = copied.contains(assets[i].id());
      byID_[assets[i].id()] = i;
      const std::string name = replacingInvalidUtf8(assets[i].name());
      byName_[name].indices.push_back(i);
      if (const std::string part = uncutPart(name); !part.empty()) {
        byUncutPart_[part].indices.push_back(i);
      }
    }
  }

  std::vector<MediaAsset> assign(const std::vector<std::string_view>& paths) {
    std::vector<std::size_t> chosen(paths.size(), nobody);
    // Each rule is applied to all paths before the next one, so that a weaker rule never takes an
    // asset that a stronger one would assign.
    for (const auto rule : rules) {
      for (std::size_t i = 0; i < paths.size(); ++i) {
        if (chosen[i] == nobody) chosen[i] = (this->*rule)(paths[i]);
        if (chosen[i] != nobody) isTaken_[chosen[i]] = true;
      }
    }
    std::vector<MediaAsset> result;
    result.reserve(paths.size());
    for (std::size_t i = 0; i < paths.size(); ++i) {
      result.push_back(assets_[chosen[i] == nobody ? again(paths[i]) : chosen[i]]);
    }
    return result;
  }

 private:
  /// The assets of one name; all before `next` are taken.
  struct Namesakes {
    std::vector<std::size_t> indices;
    std::size_t next = 0;
  };

  std::size_t plannedAt(std::string_view path) {
    const auto found = planned_.byPath.find(path);
    if (found == planned_.byPath.end()) return nobody;
    const auto index = byID_.find(found->second.id());
    return index == byID_.end() || isTaken_[index->second] ? nobody : index->second;
  }
  std::size_t plannedUnnumbered(std::string_view path) { return plannedAt(unnumberedName(path)); }
  std::size_t sameName(std::string_view path) {
    return freeNamesake(path.substr(path.rfind('/') + 1));
  }
  std::size_t unnumbered(std::string_view path) {
    return freeNamesake(unnumberedName(path.substr(path.rfind('/') + 1)));
  }
  std::size_t cutForItsNumber(std::string_view path) {
    const std::string part = uncutPart(path.substr(path.rfind('/') + 1));
    return part.empty() ? nobody : freeOf(byUncutPart_, part);
  }
  std::size_t prefixed(std::string_view path) {
    const std::string name = unnumberedName(path.substr(path.rfind('/') + 1));
    for (std::size_t i = 1; i < name.size(); ++i) {
      const std::size_t found = freeNamesake(std::string_view{name}.substr(i));
      if (found != nobody) return found;
    }
    return nobody;
  }
  std::size_t anyPlanned(std::string_view) {
    const auto isChoice = [this](std::size_t i) {
      return !isTaken_[i] && planned_.ids.contains(assets_[i].id());
    };
    while (nextPlanned_ < isTaken_.size() && !isChoice(nextPlanned_)) ++nextPlanned_;
    return nextPlanned_ < isTaken_.size() ? nextPlanned_ : nobody;
  }
  std::size_t anyFree(std::string_view) {
    while (nextFree_ < isTaken_.size() && isTaken_[nextFree_]) ++nextFree_;
    return nextFree_ < isTaken_.size() ? nextFree_ : nobody;
  }
  /// For more copies than assets: finds an asset by name, taken or not.
  std::size_t again(std::string_view path) const {
    const std::string name = unnumberedName(path.substr(path.rfind('/') + 1));
    for (std::size_t i = 0; i < name.size(); ++i) {
      const auto found = byName_.find(std::string_view{name}.substr(i));
      if (found != byName_.end()) return found->second.indices.front();
    }
    return 0;
  }

  std::size_t freeNamesake(std::string_view name) { return freeOf(byName_, name); }
  std::size_t freeOf(StringMap<Namesakes>& named, std::string_view name) {
    const auto found = named.find(name);
    if (found == named.end()) return nobody;
    Namesakes& all = found->second;
    while (all.next < all.indices.size() && isTaken_[all.indices[all.next]]) ++all.next;
    return all.next < all.indices.size() ? all.indices[all.next] : nobody;
  }

  using Rule = std::size_t (Twins::*)(std::string_view);
  static constexpr std::array<Rule, 8> rules{
      &Twins::plannedAt,       &Twins::plannedUnnumbered, &Twins::sameName,   &Twins::unnumbered,
      &Twins::cutForItsNumber, &Twins::prefixed,          &Twins::anyPlanned, &Twins::anyFree};

  const std::vector<MediaAsset>& assets_;
  const PlannedAssets& planned_;
  std::vector<bool> isTaken_;
  absl::flat_hash_map<std::string_view, std::size_t> byID_;
  StringMap<Namesakes> byName_;
  StringMap<Namesakes> byUncutPart_;
  std::size_t nextPlanned_ = 0;
  std::size_t nextFree_ = 0;
};

}  // namespace

std::vector<MediaAsset> assignTwins(const std::vector<std::string_view>& paths,
                                    const std::vector<MediaAsset>& assets,
                                    const PlannedAssets& planned, const StringSet& copied) {
  return Twins{assets, planned, copied}.assign(paths);
}

}  // namespace tavrix
