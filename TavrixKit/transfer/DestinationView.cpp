#include "transfer/DestinationView.h"

#include <algorithm>
#include <future>

#include "transfer/FileNames.h"
#include "transfer/SafeNames.h"

namespace tavrix {

RecordedFiles::RecordedFiles(Shared<DestinationMarker::Marker> marker, std::string phoneHash)
    : marker_(std::move(marker)),
      phoneHash_(std::move(phoneHash)),
      knownAssets_(marker_->knownAssets(phoneHash_)) {
  std::size_t count = 0;
  for (const auto& record : marker_->records) count += record.files.size();
  owners_.reserve(count);
  for (const auto& record : marker_->records) {
    const bool isThisPhone = record.phoneHash == phoneHash_;
    if (isThisPhone) {
      for (const auto& folder : record.folders) makings_.emplace(folder.name, &folder.making);
    }
    for (const auto& file : record.files) {
      if (isThisPhone && file.keptInsteadOf)
        keptInsteadOf_.try_emplace(file.path, &*file.keptInsteadOf);
      if (!file.localID && !file.cloudID) continue;
      const Owner owner{&file, isThisPhone, record.lastTransfer};
      // A claim without a digest may come from a run that was killed before it reached the file.
      const auto [found, isNew] = owners_.try_emplace(file.path, owner);
      if (!isNew && owner.outranks(found->second)) found->second = owner;
    }
  }
}

const RecordedFiles::Owner* RecordedFiles::owner(std::string_view path) const {
  const auto found = owners_.find(path);
  return found == owners_.end() ? nullptr : &found->second;
}

const std::string* RecordedFiles::keptInsteadOf(std::string_view path) const {
  const auto found = keptInsteadOf_.find(path);
  return found == keptInsteadOf_.end() ? nullptr : found->second;
}

const Shared<DestinationMarker::FolderMaking>* RecordedFiles::making(
    std::string_view folder) const {
  const auto found = makings_.find(folder);
  return found == makings_.end() ? nullptr : found->second;
}

DestinationView::DestinationView(Shared<FilesOnDisk> filesOnDisk, Shared<RecordedFiles> recorded,
                                 std::vector<UnreadableFolder> unreadableFolders)
    : filesOnDisk_(std::move(filesOnDisk)),
      unreadableFolders_(std::move(unreadableFolders)),
      recorded_(std::move(recorded)) {}

const std::string* DestinationView::landedPath(const WantedFile& file,
                                               const std::string& base) const {
  const MediaAsset& asset = file.asset;
  const auto counts = [&](const KnownAssets::Record& record) {
    return follows(*record.path, base) && holdsRecord(file, record);
  };
  const KnownAssets& known = recorded_->knownAssets();
  const auto last = known.byLocalID.find(asset.id());
  if (last != known.byLocalID.end() && counts(last->second)) return last->second.path;
  const auto earlier = known.earlier.find(asset.id());
  if (earlier != known.earlier.end()) {
    const auto found = std::find_if(earlier->second.begin(), earlier->second.end(), counts);
    if (found != earlier->second.end()) return found->path;
  }
  if (!asset.cloudID()) return nullptr;
  const auto shot = known.byCloudID.find(*asset.cloudID());
  const bool isThere = shot != known.byCloudID.end() &&
                       isKept(*shot->second.path, shot->second.size) &&
                       isNumberedForm(*shot->second.path, base);
  return isThere ? shot->second.path : nullptr;
}

bool DestinationView::follows(const std::string& path, const std::string& base) const {
  if (isNumberedForm(path, base)) return true;
  const auto* const owner = recorded_->owner(path);
  return owner != nullptr && owner->file->hasSafeName &&
         isNumberedForm(path, SafeNames::safePath(base));
}

std::vector<const std::string*> DestinationView::recordedPaths(const WantedFile& file) const {
  std::vector<const std::string*> paths;
  const auto add = [&](const KnownAssets::Record& record) {
    if (holdsRecord(file, record)) paths.push_back(record.path);
  };
  const KnownAssets& known = recorded_->knownAssets();
  const auto last = known.byLocalID.find(file.asset.id());
  if (last == known.byLocalID.end()) return paths;
  add(last->second);
  if (const auto earlier = known.earlier.find(file.asset.id()); earlier != known.earlier.end()) {
    std::for_each(earlier->second.rbegin(), earlier->second.rend(), add);
  }
  return paths;
}

bool DestinationView::holdsRecord(const WantedFile& file, const KnownAssets::Record& record) const {
  const auto* const owner = recorded_->owner(*record.path);
  return owner->isThisPhone && isKept(*record.path, record.size) &&
         fits(file, *record.path, record.size, record.date);
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
  const auto* const onDisk = size == 0 ? filesOnDisk_->find(path) : nullptr;
  if (onDisk != nullptr) size = onDisk->size;
  return size == 0 || size == asset.sizeBytes();
}

const std::string* DestinationView::keptPath(const WantedFile& file, const std::string& base,
                                             std::string_view format) const {
  const std::string* const path = landedPath(file, base);
  const std::string* const kept = path == nullptr ? nullptr : recorded_->keptInsteadOf(*path);
  return kept != nullptr && *kept == format ? path : nullptr;
}

DestinationView::Holding DestinationView::holding(const std::string& path,
                                                  const WantedFile& file) const {
  if (!isOnDisk(path)) return Holding::nothing;
  const auto* const owner = recorded_->owner(path);
  if (owner == nullptr) return Holding::unrecorded;
  const DestinationMarker::FileRecord& there = *owner->file;
  if (!isKept(path, there.size)) return Holding::anotherAsset;
  const MediaAsset& asset = file.asset;
  const bool isSame =
      (owner->isThisPhone && there.localID == asset.id() &&
       fits(file, path, there.size, there.date)) ||
      (there.cloudID && !there.cloudID->empty() && there.cloudID == asset.cloudID());
  return isSame ? Holding::thisAsset : Holding::anotherAsset;
}

bool DestinationView::holds(const std::string& path, const WantedFile& file) const {
  return holding(path, file) == Holding::thisAsset;
}

bool DestinationView::isOnlyRecord(const std::string& path, const WantedFile& file) const {
  const auto* const onDisk = filesOnDisk_->find(path);
  if (!recorded_->knownAssets().earlier.empty() || onDisk == nullptr) return false;
  const auto* const owner = recorded_->owner(path);
  return owner != nullptr && owner->isThisPhone && owner->file->size == onDisk->size &&
         owner->file->localID == file.asset.id() &&
         fits(file, path, owner->file->size, owner->file->date);
}

bool DestinationView::holdsAnother(const std::string& path, const WantedFile& file) const {
  return holding(path, file) == Holding::anotherAsset;
}

std::optional<DifferingFile> DestinationView::difference(const std::string& path,
                                                         const WantedFile& file) const {
  using Kind = DifferingFile::Kind;
  const auto* const onDisk = filesOnDisk_->find(path);
  if (onDisk == nullptr) return std::nullopt;
  DifferingFile found{std::string{file.asset.id()}, path, Kind::foreign, onDisk->size};
  const auto* const owner = recorded_->owner(path);
  if (owner != nullptr && !owner->file->isClaim()) {
    found.expectedSize = owner->file->size;
    found.kind = found.size < *found.expectedSize ? Kind::damaged : Kind::changed;
  } else if (!isConverted(file.conversion)) {
    const std::uint64_t size = file.asset.sizeBytes();
    // The larger file may be the original of a picture that the phone has reduced since.
    if (size == 0 || (file.asset.isOptimized() && found.size > size)) return std::nullopt;
    found.expectedSize = size;
  } else if (found.size > 0) {
    return std::nullopt;
  }
  if (found.size == found.expectedSize) return std::nullopt;
  return found;
}

std::optional<DifferingFile> DestinationView::emptied(const WantedFile& file,
                                                      const std::string& base) const {
  const KnownAssets& known = recorded_->knownAssets();
  const auto last = known.byLocalID.find(file.asset.id());
  if (last == known.byLocalID.end()) return std::nullopt;
  std::vector<KnownAssets::Record> records{last->second};
  if (const auto earlier = known.earlier.find(file.asset.id()); earlier != known.earlier.end()) {
    records.insert(records.end(), earlier->second.rbegin(), earlier->second.rend());
  }
  for (const KnownAssets::Record& record : records) {
    const bool isEmptied = isOnDisk(*record.path) && !isKept(*record.path, record.size);
    if (!isEmptied || !follows(*record.path, base)) continue;
    if (!fits(file, *record.path, record.size, record.date)) continue;
    return DifferingFile{std::string{file.asset.id()}, *record.path, DifferingFile::Kind::emptied,
                         0, record.size};
  }
  return std::nullopt;
}

bool DestinationView::isStillOurs(const std::string& path) const {
  const auto* const owner = recorded_->owner(path);
  return (isOnDisk(path) || isUnreadable(path)) && (owner == nullptr || owner->isThisPhone);
}

ListedFiles listFiles(const Folder& destination) {
  ListedFiles listed;
  listed.unreadableFolders =
      destination.visitAll([&](const std::string& path, const FileStatus& status) {
        if (status.type == FileStatus::Type::file)
          listed.files.add(path, {status.size, status.modified});
      });
  return listed;
}

DestinationListing listDestination(const Folder& destination) {
  auto listing = std::async(std::launch::async, [&] { return listFiles(destination); });
  Shared<DestinationMarker::Marker> marker = DestinationMarker::load(destination);
  ListedFiles listed = listing.get();
  return {std::move(marker), std::move(listed.files), std::move(listed.unreadableFolders)};
}

DestinationContent readDestination(const Folder& destination, const std::string& phoneHash) {
  auto listing = std::async(std::launch::async, [&] { return listFiles(destination); });
  Shared<DestinationMarker::Marker> marker = DestinationMarker::load(destination);
  RecordedFiles recorded{marker, phoneHash};
  ListedFiles listed = listing.get();
  return {std::move(marker), DestinationView{std::move(listed.files), std::move(recorded),
                                             std::move(listed.unreadableFolders)}};
}

}  // namespace tavrix
