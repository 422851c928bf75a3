#pragma once

#include <string>
#include <utility>
#include <vector>

#include "foundation/files/Folder.h"
#include "transfer/DestinationMarker.h"
#include "transfer/KnownAssets.h"
#include "transfer/TransferPlan.h"

namespace tavrix {

/// The regular files below a destination, and the folders whose files nobody can list.
struct ListedFiles {
  FilesOnDisk files;
  std::vector<UnreadableFolder> unreadableFolders;  ///< by path
};
/// Lists them; links are not followed, no file is opened. Throws FileError.
ListedFiles listFiles(const Folder& destination);

/// What a planner needs to know of a destination: the files in it and whose they are. A value, made
/// once before planning.
class DestinationView {
 public:
  DestinationView() = default;
  /// The view of the phone with `phoneHash`; the folders whose files could not be listed by path.
  DestinationView(FilesOnDisk filesOnDisk, const DestinationMarker::Marker& marker,
                  const std::string& phoneHash,
                  std::vector<UnreadableFolder> unreadableFolders = {});

  const FilesOnDisk& filesOnDisk() const { return filesOnDisk_; }
  const KnownAssets& knownAssets() const { return knownAssets_; }
  bool isEmpty() const { return filesOnDisk_.empty(); }

  bool isOnDisk(const std::string& path) const { return filesOnDisk_.contains(path); }
  /// By path; what lies in them is not among the files on disk.
  const std::vector<UnreadableFolder>& unreadableFolders() const { return unreadableFolders_; }
  /// Nobody can say whether a file is at the path: it lies in a folder that may not be read.
  bool isUnreadable(const std::string& path) const { return liesInside(path, unreadableFolders_); }

  // What is recorded under the file's own id, with another size than the file's, is another
  // picture's: two memory cards may give two pictures one id. Only of a file that is converted on
  // its way, of a reduced copy, and where the size is not known, does the size tell nothing. Where
  // the record tells when the shot was taken, one of another moment is another picture, too.

  /// A file is on disk at the path and recorded for this very one.
  bool holds(const std::string& path, const WantedFile& file) const;
  /// A file is on disk at the path and recorded for an asset, but not for this one.
  bool holdsAnother(const std::string& path, const WantedFile& file) const;
  /// The path of a file that is on disk, recorded for this one, and lies at `base` or a numbered
  /// form of it; null when there is none.
  const std::string* landedPath(const WantedFile& file, const std::string& base) const;
  /// The same for an original that was kept there because it cannot be converted to `format`.
  const std::string* keptPath(const WantedFile& file, const std::string& base,
                              std::string_view format) const;

  /// A file is on disk at the path, or may be as far as anybody can say, and no other phone has a
  /// better claim to it than this one.
  bool isStillOurs(const std::string& path) const;

 private:
  struct Owner {
    std::string localID;  ///< empty for an asset of another phone, which no id of ours can equal
    std::string cloudID;
    std::uint64_t size = 0;  ///< as recorded; 0 where nothing has been seen of the file
    std::optional<ShotDate> date;
    bool isThisPhone = false;
    bool hasDigest = false;
    Instant recorded;

    /// Of several claims to one path, one with a digest counts more, then the later one.
    bool outranks(const Owner& other) const {
      return std::pair{hasDigest, recorded} > std::pair{other.hasDigest, other.recorded};
    }
  };
  enum class Holding { nothing, unrecorded, thisAsset, anotherAsset };

  void rememberEarlier(const DestinationMarker::PhoneRecord& record);
  Holding holding(const std::string& path, const WantedFile& file) const;
  /// Whether what is recorded at a path on disk, under the file's id, may be the file's.
  bool fits(const WantedFile& file, const std::string& path, std::uint64_t size,
            const std::optional<ShotDate>& date) const;

  FilesOnDisk filesOnDisk_;
  std::vector<UnreadableFolder> unreadableFolders_;
  KnownAssets knownAssets_;
  StringMap<Owner> owners_;
  /// Of an id that was copied under several names or into several folders: all but the last.
  StringMap<std::vector<KnownAssets::Record>> earlier_;
  StringMap<std::string> keptInsteadOf_;  ///< by path, of this phone
};

/// A destination as it lies there: its files and its phones' records.
struct DestinationListing {
  DestinationMarker::Marker marker;
  FilesOnDisk files;
  std::vector<UnreadableFolder> unreadableFolders{};  ///< by path
};
/// Lists the files while the marker is being read. Throws FileError and MarkerError.
DestinationListing listDestination(const Folder& destination);

/// All that is to be known of a destination before planning.
struct DestinationContent {
  DestinationMarker::Marker marker;
  DestinationView view;
};
/// Throws FileError and MarkerError.
DestinationContent readDestination(const Folder& destination, const std::string& phoneHash);

}  // namespace tavrix
