#include "transfer/CopyVerification.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <numeric>
#include <utility>

#include "foundation/Text.h"
#include "foundation/files/AtomicFile.h"
#include "foundation/files/FileError.h"
#include "transfer/ChecksumFile.h"
#include "transfer/FileDigester.h"
#include "transfer/FileNames.h"
#include "transfer/MarkerClaims.h"

namespace tavrix::CopyVerification {
namespace {

using DestinationMarker::Claim;
using DestinationMarker::Claims;

constexpr std::string_view leftOverEnding = ".part";

class Verification {
 public:
  Verification(const Folder& destination, const DestinationListing& listing, const Options& options)
      : destination_(destination), listing_(listing), options_(options) {}

  Report run(const ReadingMeter::Receiver& progress, const std::stop_token& stop) {
    const Claims claims = DestinationMarker::claims(*listing_.marker);
    checkWithoutReading(claims);
    listOthers(claims);
    readAll(progress, stop);
    report_.damagedRecords = listing_.marker->damaged;
    report_.unreadableFolders = listing_.unreadableFolders;
    report_.isStopped = report_.count(State::notReached) > 0;
    return std::move(report_);
  }

 private:
  /// Sets the states that follow from names and sizes; files left to read stay `notReached`.
  void checkWithoutReading(const Claims& claims) {
    std::vector<Claim> entries;
    entries.reserve(claims.size());
    for (const auto& [path, claim] : claims) entries.push_back(claim);
    std::sort(entries.begin(), entries.end(),
              [](const Claim& a, const Claim& b) { return a.file->path < b.file->path; });
    report_.files.reserve(entries.size());
    for (const Claim& entry : entries) report_.files.push_back(looked(entry));
  }

  CheckedFile looked(const Claim& claim) const {
    CheckedFile file;
    file.path = claim.file->path;
    file.expectedSize = claim.file->size;
    if (claim.hasDigest()) {
      file.expectedSha256 = lowerCased(*claim.file->sha256);
    } else if (const auto found = options_.listed.find(file.path); found != options_.listed.end()) {
      file.listedSha256 = found->second;
    }
    const auto* const listed = listing_.files->find(file.path);
    if (listed == nullptr) {
      lookAgain(file);
      return file;
    }
    file.size = listed->size;
    if (file.size != file.expectedSize && !claim.file->isClaim()) {
      file.state = State::changed;
    } else if (!file.expectedSha256 && !options_.digestsAll) {
      file.state = State::withoutChecksum;
    }
    return file;
  }

  /// Returns the state of a file that is absent.
  static State absent(const CheckedFile& file) {
    const bool wasThere = file.expectedSha256 || file.listedSha256 || file.expectedSize > 0;
    return wasThere ? State::missing : State::neverConfirmed;
  }

  /// Determines why a path is not among the listed files.
  void lookAgain(CheckedFile& file) const {
    try {
      const auto status = destination_.status(file.path);
      if (!status) {
        file.state = absent(file);
      } else if (status->type != FileStatus::Type::file) {
        file.state = State::changed;
        file.found = status->type;
      } else {
        // It was created, or its folder became readable, after the listing.
        file.size = status->size;
        if (!file.expectedSha256) file.state = State::withoutChecksum;
      }
    } catch (const FileError& error) {
      file.state = State::unreadable;
      file.errorCode = error.code();
    }
  }

  void listOthers(const Claims& claims) {
    for (const auto& [path, onDisk] : *listing_.files) {
      if (claims.contains(path) || DestinationMarker::isOwnFile(path)) continue;
      if (path == ChecksumFile::name) continue;
      if (path.ends_with(leftOverEnding) || isStaged(path)) {
        report_.leftOvers.emplace_back(path);
      } else {
        report_.unknown.push_back({std::string{path}, onDisk.size});
      }
    }
    std::sort(report_.leftOvers.begin(), report_.leftOvers.end());
    std::sort(report_.unknown.begin(), report_.unknown.end(),
              [](const auto& a, const auto& b) { return a.path < b.path; });
  }

  void readAll(const ReadingMeter::Receiver& progress, const std::stop_token& stop) {
    std::vector<CheckedFile*> files;
    std::vector<std::uint64_t> sizes;
    for (CheckedFile& file : report_.files) {
      if (file.state != State::notReached) continue;
      files.push_back(&file);
      sizes.push_back(*file.size);
    }
    ReadingMeter meter{files.size(), std::accumulate(sizes.begin(), sizes.end(), std::uint64_t{0}),
                       progress};
    std::atomic<std::uint64_t> bytesRead = 0;
    const auto order = readingOrder(sizes);
    digestInParallel(files.size(), options_.threads, stop,
                     [&](std::size_t i, FileDigester& digester) {
                       bytesRead += read(*files[order[i]], digester, meter);
                     });
    report_.bytesRead = bytesRead;
  }

  /// Reads one file and sets its state. Returns the number of bytes read.
  std::uint64_t read(CheckedFile& file, FileDigester& digester, ReadingMeter& meter) const {
    const std::uint64_t listed = *file.size;
    std::uint64_t bytes = 0;
    meter.began(lastPathComponent(file.path));
    try {
      auto digest = digester.digest(destination_, file.path, [&](std::uint64_t count) {
        bytes += count;
        meter.read(count);
      });
      if (!digest) return bytes;
      file.size = digest->bytes;
      file.sha256 = std::move(digest->sha256);
      file.state = stateOf(file);
    } catch (const FileError& error) {
      fail(file, error);
    }
    meter.finished(listed, bytes);
    return bytes;
  }

  static State stateOf(const CheckedFile& file) {
    if (!file.expectedSha256) {
      const bool differs = file.listedSha256 && file.listedSha256 != file.sha256;
      return differs ? State::changed : State::withoutChecksum;
    }
    const bool isSame = file.sha256 == file.expectedSha256 && file.size == file.expectedSize;
    return isSame ? State::intact : State::changed;
  }

  static void fail(CheckedFile& file, const FileError& error) {
    file.errorCode = error.code();
    file.state = State::unreadable;
    if (error.code() != ENOENT) return;
    // It was removed after the listing.
    file.errorCode = 0;
    file.size.reset();
    file.state = absent(file);
  }

  const Folder& destination_;
  const DestinationListing& listing_;
  const Options& options_;
  Report report_;
};

}  // namespace

std::string_view textOf(State state) {
  constexpr std::array<std::string_view, 8> texts{"intact",     "changed",         "missing",
                                                  "unreadable", "withoutChecksum", "neverConfirmed",
                                                  "notReached", "beingWritten"};
  return texts.at(static_cast<std::size_t>(state));
}

std::uint64_t Report::count(State state) const {
  return static_cast<std::uint64_t>(std::count_if(
      files.begin(), files.end(), [&](const CheckedFile& file) { return file.state == state; }));
}

std::uint64_t Report::lostFiles() const {
  return count(State::changed) + count(State::missing) + count(State::unreadable) +
         count(State::neverConfirmed);
}

bool Report::hasLosses() const {
  return !damagedRecords.empty() || !unreadableFolders.empty() || lostFiles() > 0;
}

Report verify(const Folder& destination, const DestinationListing& listing, const Options& options,
              const ReadingMeter::Receiver& progress, const std::stop_token& stop) {
  return Verification{destination, listing, options}.run(progress, stop);
}

}  // namespace tavrix::CopyVerification
