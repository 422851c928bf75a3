#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "foundation/Shared.h"
#include "foundation/files/Folder.h"
#include "transfer/DestinationMarker.h"
#include "transfer/FilesOnDisk.h"
#include "transfer/KnownAssets.h"
#include "transfer/TransferPlan.h"

namespace tavrix {

/// The regular files below a destination, and the folders that could not be listed.
struct ListedFiles {
  FilesOnDisk files;
  std::vector<UnreadableFolder> unreadableFolders;  ///< by path
};
/// Lists the files without following links or opening files. Throws FileError.
ListedFiles listFiles(const Folder& destination);

/// The records of a marker as one phone sees them: by path and by the ids of its assets. Made once;
/// refers to the texts of the marker, which it keeps.
class RecordedFiles {
 public:
  RecordedFiles() = default;
  RecordedFiles(Shared<DestinationMarker::Marker> marker, std::string phoneHash);

  /// The record with the best claim to a path.
  struct Owner {
    const DestinationMarker::FileRecord* file = nullptr;
    bool isThisPhone = false;
    Instant recorded;  ///< the phone's last transfer

    /// A claim with a digest outranks one without; ties are settled by the later date.
    bool outranks(const Owner& other) const {
      return std::pair{file->sha256.has_value(), recorded} >
             std::pair{other.file->sha256.has_value(), other.recorded};
    }
  };
  /// Returns nullptr if no phone has recorded an asset at the path.
  const Owner* owner(std::string_view path) const;
  const KnownAssets& knownAssets() const { return knownAssets_; }
  /// Returns the format to which the original at this path could not be converted; nullptr if there
  /// is none.
  const std::string* keptInsteadOf(std::string_view path) const;
  /// Returns how this phone's folder got its name; nullptr if that was not recorded.
  const Shared<DestinationMarker::FolderMaking>* making(std::string_view folder) const;

  /// Compares the markers and the phones.
  friend bool operator==(const RecordedFiles& a, const RecordedFiles& b) {
    return a.phoneHash_ == b.phoneHash_ && a.marker_ == b.marker_;
  }

 private:
  Shared<DestinationMarker::Marker> marker_;
  std::string phoneHash_;
  KnownAssets knownAssets_;
  StringViewMap<Owner> owners_;
  StringViewMap<const std::string*> keptInsteadOf_;
  StringViewMap<const Shared<DestinationMarker::FolderMaking>*> makings_;
};

/// The planner's view of a destination: the files in it and whose they are. A value, made once
/// before planning.
class DestinationView {
 public:
  DestinationView() = default;
  /// `unreadableFolders` must be sorted by path.
  DestinationView(Shared<FilesOnDisk> filesOnDisk, Shared<RecordedFiles> recorded,
                  std::vector<UnreadableFolder> unreadableFolders = {});

  const FilesOnDisk& filesOnDisk() const { return *filesOnDisk_; }
  const KnownAssets& knownAssets() const { return recorded_->knownAssets(); }
  bool isEmpty() const { return filesOnDisk_->empty(); }

  bool isOnDisk(const std::string& path) const { return filesOnDisk_->contains(path); }
  /// By path; the files in these folders are not in filesOnDisk().
  const std::vector<UnreadableFolder>& unreadableFolders() const { return unreadableFolders_; }
  /// Returns true if the path is in a folder that cannot be read, so that its existence is unknown.
  bool isUnreadable(const std::string& path) const { return liesInside(path, unreadableFolders_); }

  // Two memory cards may give the same id to two pictures. A recorded file with the same id but
  // another size is therefore another picture. The size proves nothing if the file is converted, if
  // it is a reduced copy, or if its size is unknown. If the record has the date of the shot, a
  // different date also means another picture. An empty file that is recorded with a size has lost
  // its bytes: its path is taken, but it is not the asset.

  /// Returns true if the file at the path is on disk and recorded for this asset.
  bool holds(const std::string& path, const WantedFile& file) const;
  /// Returns true if the phone has recorded no asset twice and the file at the path is on disk with
  /// its recorded size and recorded for this asset's id. So landedPath() for this path would return
  /// it, and difference() nullopt.
  bool isOnlyRecord(const std::string& path, const WantedFile& file) const;
  /// Returns true if the file at the path is on disk and recorded for an asset, but not for this
  /// one, or if it was emptied.
  bool holdsAnother(const std::string& path, const WantedFile& file) const;
  /// Returns the path of a file that is on disk, is recorded for this asset, and has the path
  /// `base`, a numbered form of it, or the safe form that the volume required; nullptr if there is
  /// none.
  const std::string* landedPath(const WantedFile& file, const std::string& base) const;
  /// Returns the paths of all files that are on disk and recorded for this asset's id, the one that
  /// was recorded last first.
  std::vector<const std::string*> recordedPaths(const WantedFile& file) const;
  /// As landedPath(), for an original that was kept because it cannot be converted to `format`.
  const std::string* keptPath(const WantedFile& file, const std::string& base,
                              std::string_view format) const;
  /// Returns how the file at a path differs from the one that is recorded there or, without a
  /// record, from the file on the phone. Returns nullopt if it does not differ, if nothing is at
  /// the path, or if sizes prove nothing.
  std::optional<DifferingFile> difference(const std::string& path, const WantedFile& file) const;
  /// As landedPath(), for a file that was emptied since it was recorded.
  std::optional<DifferingFile> emptied(const WantedFile& file, const std::string& base) const;

  /// Returns how this phone's folder got its name; nullptr if that was not recorded.
  const Shared<DestinationMarker::FolderMaking>* making(std::string_view folder) const {
    return recorded_->making(folder);
  }

  /// Returns true if a file is on disk at the path, or may be in an unreadable folder, and no other
  /// phone has a better claim to it.
  bool isStillOurs(const std::string& path) const;

  friend bool operator==(const DestinationView&, const DestinationView&) = default;

 private:
  /// Returns true if the file at the path is on disk, and not empty if it is recorded with a size.
  bool isKept(const std::string& path, std::uint64_t recordedSize) const {
    const auto* const onDisk = filesOnDisk_->find(path);
    return onDisk != nullptr && (onDisk->size > 0 || recordedSize == 0);
  }
  /// Returns true if the recorded file is kept on disk, this phone's, and may be that asset.
  bool holdsRecord(const WantedFile& file, const KnownAssets::Record& record) const;
  /// Returns true if the recorded path follows from `base`, by a number or by its safe form.
  bool follows(const std::string& path, const std::string& base) const;
  enum class Holding { nothing, unrecorded, thisAsset, anotherAsset };

  Holding holding(const std::string& path, const WantedFile& file) const;
  /// Returns true if the file recorded at a path on disk, under the id of `file`, may be that
  /// asset.
  bool fits(const WantedFile& file, const std::string& path, std::uint64_t size,
            const std::optional<ShotDate>& date) const;

  Shared<FilesOnDisk> filesOnDisk_;
  std::vector<UnreadableFolder> unreadableFolders_;
  Shared<RecordedFiles> recorded_;
};

/// The files of a destination and the records of its phones.
struct DestinationListing {
  Shared<DestinationMarker::Marker> marker;
  Shared<FilesOnDisk> files;
  std::vector<UnreadableFolder> unreadableFolders{};  ///< by path
};
/// Lists the files in parallel with reading the marker. Throws FileError and MarkerError.
DestinationListing listDestination(const Folder& destination);

/// The marker of a destination and the view for planning.
struct DestinationContent {
  Shared<DestinationMarker::Marker> marker;
  DestinationView view;

  friend bool operator==(const DestinationContent&, const DestinationContent&) = default;
};
/// Reads what the phone with `phoneHash` finds. Throws FileError and MarkerError.
DestinationContent readDestination(const Folder& destination, const std::string& phoneHash);

}  // namespace tavrix
