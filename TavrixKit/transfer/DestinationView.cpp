#include "transfer/DestinationView.h"

#include <algorithm>
#include <future>

#include "transfer/FileNames.h"

namespace tavrix {
namespace {

/// Returns true if a shot was taken at another moment than the recorded one. The date of a camera's
/// clock never changes. A file's modification date can shift by whole quarters of an hour if the
/// volume stores local time, and so can an instant that was derived from clock time. Dates of
/// different kinds are not compared: a picture that could once not be read has only its file's
/// date.
bool isAnotherShot(const std::optional<ShotDate>& date, const std::optional<ShotDate>& recorded) {
  using namespace std::chrono_literals;
  constexpr auto largestShift = 26h;
  if (!date || !recorded) return false;
  if (!recorded->isOfEarlierForm && date->isOwn != recorded->isOwn) return false;
  const auto distance = std::chrono::abs(date->at - recorded->at);
  const bool isExact = date->isOwn && !recorded->isOfEarlierForm;
  return isExact ? distance != 0ms : distance > largestShift || distance % 15min != 0ms;
}

}  // namespace

DestinationView::DestinationView(FilesOnDisk filesOnDisk, const DestinationMarker::Marker& marker,
                                 const std::string& phoneHash,
                                 std::vector<UnreadableFolder> unreadableFolders)
    : filesOnDisk_(std::move(filesOnDisk)), unreadableFolders_(std::move(unreadableFolders)) {
  owners_.reserve(filesOnDisk_.size());
  for (const auto& record : marker.records) {
    const bool isThisPhone = record.phoneHash == phoneHash;
    for (const auto& file : record.files) {
      if (!file.localID && !file.cloudID) continue;
      Owner owner{isThisPhone ? file.localID.value_or("") : "",
                  file.cloudID.value_or(""),
                  file.size,
                  file.date,
                  isThisPhone,
                  file.sha256.has_value(),
                  record.lastTransfer};
      // A claim without a digest may come from a run that was killed before it reached the file.
      const auto [found, isNew] = owners_.try_emplace(file.path, owner);
      if (!isNew && owner.outranks(found->second)) found->second = std::move(owner);
    }
  }
  knownAssets_ = marker.knownAssets(phoneHash);
  const auto isLost = [&](const auto& entry) {
    const auto found = owners_.find(entry.second.path);
    return found != owners_.end() && !found->second.isThisPhone;
  };
  absl::erase_if(knownAssets_.byLocalID, isLost);
  if (const auto* const own = marker.record(phoneHash)) rememberEarlier(*own);
}

void DestinationView::rememberEarlier(const DestinationMarker::PhoneRecord& record) {
  for (const auto& file : record.files) {
    if (file.keptInsteadOf) keptInsteadOf_.emplace(file.path, *file.keptInsteadOf);
    if (!file.localID) continue;
    const auto last = knownAssets_.byLocalID.find(*file.localID);
    const bool isLast = last != knownAssets_.byLocalID.end() && last->second.path == file.path;
    if (!isLast && isStillOurs(file.path)) {
      earlier_[*file.localID].push_back({file.path, file.size, file.date});
    }
  }
}

const std::string* DestinationView::landedPath(const WantedFile& file,
                                               const std::string& base) const {
  const MediaAsset& asset = file.asset;
  const auto lies = [&](const std::string& path) {
    return isOnDisk(path) && isNumberedForm(path, base);
  };
  const auto counts = [&](const KnownAssets::Record& record) {
    return lies(record.path) && fits(file, record.path, record.size, record.date);
  };
  const auto last = knownAssets_.byLocalID.find(asset.id());
  if (last != knownAssets_.byLocalID.end() && counts(last->second)) return &last->second.path;
  const auto earlier = earlier_.find(asset.id());
  if (earlier != earlier_.end()) {
    const auto found = std::find_if(earlier->second.begin(), earlier->second.end(), counts);
    if (found != earlier->second.end()) return &found->path;
  }
  if (!asset.cloudID()) return nullptr;
  const auto shot = knownAssets_.byCloudID.find(*asset.cloudID());
  const bool isThere = shot != knownAssets_.byCloudID.end() && lies(shot->second.path);
  return isThere ? &shot->second.path : nullptr;
}

bool DestinationView::fits(const WantedFile& file, const std::string& path, std::uint64_t size,
                           const std::optional<ShotDate>& recorded) const {
  const MediaAsset& asset = file.asset;
  const auto date = shotDate(asset, file.lead);
  if (isAnotherShot(date, recorded)) return false;
  if (isConverted(file.conversion) || asset.sizeBytes() == 0) return true;
  // The original is there and larger. But a small picture of a camera looks like a reduced copy, so
  // the dates must be recorded and equal.
  const bool isOfThatDate = recorded && date == recorded;
  if (asset.isOptimized() && isOfThatDate && size > 0) return true;
  // A claim of a killed run has no size; the size on disk is used instead.
  const auto onDisk = filesOnDisk_.find(path);
  if (size == 0 && onDisk != filesOnDisk_.end()) size = onDisk->second.size;
  return size == 0 || size == asset.sizeBytes();
}

const std::string* DestinationView::keptPath(const WantedFile& file, const std::string& base,
                                             std::string_view format) const {
  const std::string* const path = landedPath(file, base);
  const auto found = path == nullptr ? keptInsteadOf_.end() : keptInsteadOf_.find(*path);
  return found != keptInsteadOf_.end() && found->second == format ? path : nullptr;
}

DestinationView::Holding DestinationView::holding(const std::string& path,
                                                  const WantedFile& file) const {
  if (!isOnDisk(path)) return Holding::nothing;
  const auto found = owners_.find(path);
  if (found == owners_.end()) return Holding::unrecorded;
  const Owner& owner = found->second;
  const MediaAsset& asset = file.asset;
  const bool isSame =
      (!owner.localID.empty() && owner.localID == asset.id() &&
       fits(file, path, owner.size, owner.date)) ||
      (!owner.cloudID.empty() && asset.cloudID() && owner.cloudID == *asset.cloudID());
  return isSame ? Holding::thisAsset : Holding::anotherAsset;
}

bool DestinationView::holds(const std::string& path, const WantedFile& file) const {
  return holding(path, file) == Holding::thisAsset;
}

bool DestinationView::holdsAnother(const std::string& path, const WantedFile& file) const {
  return holding(path, file) == Holding::anotherAsset;
}

bool DestinationView::isStillOurs(const std::string& path) const {
  const auto found = owners_.find(path);
  return (isOnDisk(path) || isUnreadable(path)) &&
         (found == owners_.end() || found->second.isThisPhone);
}

ListedFiles listFiles(const Folder& destination) {
  ListedFiles listed;
  listed.unreadableFolders =
      destination.visitAll([&](const std::string& path, const FileStatus& status) {
        if (status.type == FileStatus::Type::file)
          listed.files.emplace(path, FileOnDisk{status.size, status.modified});
      });
  return listed;
}

DestinationListing listDestination(const Folder& destination) {
  auto listing = std::async(std::launch::async, [&] { return listFiles(destination); });
  DestinationMarker::Marker marker = DestinationMarker::load(destination);
  ListedFiles listed = listing.get();
  return {std::move(marker), std::move(listed.files), std::move(listed.unreadableFolders)};
}

DestinationContent readDestination(const Folder& destination, const std::string& phoneHash) {
  DestinationListing listing = listDestination(destination);
  DestinationContent content;
  content.marker = std::move(listing.marker);
  content.view = DestinationView{std::move(listing.files), content.marker, phoneHash,
                                 std::move(listing.unreadableFolders)};
  return content;
}

}  // namespace tavrix
