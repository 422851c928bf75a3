#include "transfer/MarkerRebuild.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <mutex>
#include <new>

#include "foundation/Text.h"
#include "foundation/files/AtomicFile.h"
#include "foundation/files/FileError.h"
#include "transfer/ChecksumFile.h"
#include "transfer/FileDigester.h"
#include "transfer/MarkerClaims.h"
#include "transfer/TwinAssignment.h"

namespace tavrix::MarkerRebuild {
namespace {

/// A file of the phone that may have a copy.
struct Candidate {
  MediaAsset asset;
  std::optional<std::string> sha256;
};

/// The files of both sides that have the same size.
struct SizeClass {
  std::uint64_t size = 0;
  std::vector<std::size_t> files;       ///< indices into the report's files
  std::vector<std::size_t> candidates;  ///< indices into the candidates
  std::size_t unread = 0;               ///< on both sides

  std::size_t count() const { return files.size() + candidates.size(); }
};

/// One file to read.
struct Piece {
  std::size_t sizeClass = 0;
  std::size_t index = 0;  ///< of the file or candidate
  bool isCandidate = false;
};

class Recognition {
 public:
  Recognition(const Folder& destination, MediaSource& source, const Request& request)
      : destination_(destination), source_(source), request_(request) {}

  Report run(const ReadingMeter::Receiver& progress, const std::stop_token& stop) {
    listFiles();
    gatherSizes();
    readAll(progress, stop);
    PlannedAssets planned;
    planned.byPath.reserve(request_.plan.files.size());
    planned.ids.reserve(request_.plan.files.size());
    for (const PlannedFile& file : request_.plan.files) planned.add(file.relativePath, file.asset);
    for (const SizeClass& each : classes_) match(each, planned);
    std::sort(report_.unreadableAssets.begin(), report_.unreadableAssets.end(),
              [](const MediaAsset& a, const MediaAsset& b) { return a.id() < b.id(); });
    report_.unreadableFolders = request_.listing.unreadableFolders;
    report_.isStopped = report_.count(State::notReached) > 0;
    return std::move(report_);
  }

 private:
  void listFiles() {
    const auto claims = DestinationMarker::claims(*request_.listing.marker);
    for (const auto& [path, onDisk] : *request_.listing.files) {
      const auto claim = claims.find(path);
      const bool isOurs = DestinationMarker::isOwnFile(path) || path == ChecksumFile::name;
      if ((isOurs && claim == claims.end()) || path.ends_with(".part")) continue;
      ExaminedFile file;
      file.path = path;
      file.size = onDisk.size;
      if (claim != claims.end()) {
        file.state = recordedState(claim->second, onDisk.size);
        if (file.state == State::alreadyRecorded) rememberCopy(*claim->second.file);
      }
      report_.files.push_back(std::move(file));
    }
    std::sort(report_.files.begin(), report_.files.end(),
              [](const auto& a, const auto& b) { return a.path < b.path; });
  }

  /// Remembers that an asset has its copy, so that it does not take the copies of its twins.
  void rememberCopy(const DestinationMarker::FileRecord& file) {
    if (file.localID) copied_[lowerCased(*file.sha256)].insert(*file.localID);
  }

  State recordedState(const DestinationMarker::Claim& claim, std::uint64_t size) const {
    if (!claim.hasDigest() || claim.file->size != size) return State::unmatched;
    const bool isThisPhone = claim.record->phoneHash == request_.phoneHash;
    return isThisPhone ? State::alreadyRecorded : State::otherPhone;
  }

  /// Builds the classes of the sizes that occur on both sides, in the order of the destination's
  /// paths.
  void gatherSizes() {
    absl::flat_hash_map<std::uint64_t, std::size_t> classOfSize;
    for (const ExaminedFile& file : report_.files) {
      if (file.state == State::unmatched) classOfSize.try_emplace(file.size, SIZE_MAX);
    }
    absl::flat_hash_map<std::uint64_t, std::vector<std::size_t>> candidatesOfSize;
    for (const MediaAsset& asset : request_.assets) {
      if (!classOfSize.contains(asset.sizeBytes())) continue;
      candidatesOfSize[asset.sizeBytes()].push_back(candidates_.size());
      candidates_.push_back({asset, std::nullopt});
    }
    for (std::size_t i = 0; i < report_.files.size(); ++i) {
      const ExaminedFile& file = report_.files[i];
      const auto candidates = candidatesOfSize.find(file.size);
      if (file.state != State::unmatched || candidates == candidatesOfSize.end()) continue;
      std::size_t& place = classOfSize[file.size];
      if (place == SIZE_MAX) {
        place = classes_.size();
        classes_.push_back({file.size, {}, std::move(candidates->second), 0});
      }
      classes_[place].files.push_back(i);
    }
    for (SizeClass& each : classes_) each.unread = each.count();
  }

  /// All files of one size follow each other, so that the sizes finished before a stop are
  /// complete.
  std::vector<Piece> pieces() const {
    std::vector<std::uint64_t> sizes;
    sizes.reserve(classes_.size());
    for (const SizeClass& each : classes_) sizes.push_back(each.size);
    std::vector<Piece> result;
    for (const std::size_t place : readingOrder(sizes)) {
      for (const std::size_t i : classes_[place].files) result.push_back({place, i, false});
      for (const std::size_t i : classes_[place].candidates) result.push_back({place, i, true});
    }
    return result;
  }

  void readAll(const ReadingMeter::Receiver& progress, const std::stop_token& stop) {
    const std::vector<Piece> all = pieces();
    std::uint64_t bytes = 0;
    for (const SizeClass& each : classes_) bytes += each.size * each.count();
    ReadingMeter meter{all.size(), bytes, progress};
    std::atomic<std::uint64_t> bytesRead = 0;
    digestInParallel(
        all.size(), request_.threads, stop, [&](std::size_t i, FileDigester& digester) {
          std::uint64_t count = 0;
          const auto received = [&](std::uint64_t more) {
            count += more;
            meter.read(more);
          };
          meter.began(nameOf(all[i]));
          const bool isDone = all[i].isCandidate
                                  ? readCandidate(all[i].index, digester, received, stop)
                                  : readFile(all[i].index, digester, received);
          bytesRead += count;
          if (!isDone) return;
          meter.finished(classes_[all[i].sizeClass].size, count);
          const std::lock_guard lock{mutex_};
          --classes_[all[i].sizeClass].unread;
        });
    report_.bytesRead = bytesRead;
  }

  std::string nameOf(const Piece& piece) const {
    return piece.isCandidate ? std::string{candidates_[piece.index].asset.name()}
                             : lastPathComponent(report_.files[piece.index].path);
  }

  /// Returns false if it was stopped.
  bool readFile(std::size_t index, FileDigester& digester, const FileDigester::Received& received) {
    ExaminedFile& file = report_.files[index];
    try {
      auto digest = digester.digest(destination_, file.path, received);
      if (!digest) return false;
      file.sha256 = std::move(digest->sha256);
      file.size = digest->bytes;
    } catch (const FileError& error) {
      file.state = State::unreadable;
      file.errorCode = error.code();
    }
    return true;
  }

  bool readCandidate(std::size_t index, FileDigester& digester,
                     const FileDigester::Received& received, const std::stop_token& stop) {
    Candidate& candidate = candidates_[index];
    try {
      auto digest = digester.digest(source_, candidate.asset, received);
      if (!digest && stop.stop_requested()) return false;
      // If the size differs from the listed one, the content on the phone is unknown.
      if (digest && digest->bytes == candidate.asset.sizeBytes()) {
        candidate.sha256 = std::move(digest->sha256);
        return true;
      }
    } catch (const std::bad_alloc&) {
      throw;
    } catch (const std::exception&) {
      // The error concerns one file, which is listed with the other unreadable ones.
    }
    const std::lock_guard lock{mutex_};
    report_.unreadableAssets.push_back(candidate.asset);
    return true;
  }

  void match(const SizeClass& each, const PlannedAssets& planned) {
    if (each.unread > 0) {
      for (const std::size_t i : each.files) report_.files[i].state = State::notReached;
      return;
    }
    StringMap<std::vector<MediaAsset>> assetsOf;
    for (const std::size_t i : each.candidates) {
      const Candidate& candidate = candidates_[i];
      if (candidate.sha256) assetsOf[*candidate.sha256].push_back(candidate.asset);
    }
    StringMap<std::vector<std::size_t>> filesOf;
    for (const std::size_t i : each.files) {
      const auto& digest = report_.files[i].sha256;
      if (digest && assetsOf.contains(*digest)) filesOf[*digest].push_back(i);
    }
    for (const auto& [digest, files] : filesOf) {
      assign(files, assetsOf[digest], planned, copied_[digest]);
    }
  }

  void assign(const std::vector<std::size_t>& files, const std::vector<MediaAsset>& assets,
              const PlannedAssets& planned, const StringSet& copied) {
    std::vector<std::string_view> paths;
    for (const std::size_t i : files) paths.emplace_back(report_.files[i].path);
    const std::vector<MediaAsset> owners = assignTwins(paths, assets, planned, copied);
    for (std::size_t i = 0; i < files.size(); ++i) {
      ExaminedFile& file = report_.files[files[i]];
      file.asset = owners[i];
      file.state = State::recognised;
    }
  }

  const Folder& destination_;
  MediaSource& source_;
  const Request& request_;
  Report report_;
  std::vector<Candidate> candidates_;
  std::vector<SizeClass> classes_;
  /// The ids of the assets whose copies the phone's record names, by digest.
  StringMap<StringSet> copied_;
  std::mutex mutex_;
};

/// Returns, by id, the picture whose date applies to each file that is not a picture.
absl::flat_hash_map<std::string_view, MediaAsset> leadsOf(const std::vector<AssetBundle>& bundles) {
  absl::flat_hash_map<std::string_view, MediaAsset> leads;
  for (const AssetBundle& bundle : bundles) {
    for (const MediaAsset& asset : bundle.assets()) {
      if (!isPictureKind(asset.kind())) leads.try_emplace(asset.id(), leadOf(bundle));
    }
  }
  return leads;
}

}  // namespace

std::string_view textOf(State state) {
  constexpr std::array<std::string_view, 6> texts{"alreadyRecorded", "recognised", "otherPhone",
                                                  "unmatched",       "unreadable", "notReached"};
  return texts.at(static_cast<std::size_t>(state));
}

std::uint64_t Report::count(State state) const {
  return static_cast<std::uint64_t>(std::count_if(
      files.begin(), files.end(), [&](const ExaminedFile& file) { return file.state == state; }));
}

Report recognise(const Folder& destination, MediaSource& source, const Request& request,
                 const ReadingMeter::Receiver& progress, const std::stop_token& stop) {
  return Recognition{destination, source, request}.run(progress, stop);
}

std::vector<DestinationMarker::FileRecord> records(const Report& report,
                                                   const std::vector<AssetBundle>& bundles,
                                                   bool hasSerialNumber) {
  const auto leads = leadsOf(bundles);
  std::vector<DestinationMarker::FileRecord> result;
  for (const ExaminedFile& file : report.files) {
    if (file.state != State::recognised) continue;
    const auto cloudID = file.asset->cloudID();
    const auto lead = leads.find(file.asset->id());
    result.push_back({file.path, file.size, file.sha256, std::string{file.asset->id()},
                      cloudID ? std::optional<std::string>{*cloudID} : std::nullopt, std::nullopt,
                      recordedDate(*file.asset, lead == leads.end() ? *file.asset : lead->second,
                                   hasSerialNumber)});
  }
  return result;
}

}  // namespace tavrix::MarkerRebuild
