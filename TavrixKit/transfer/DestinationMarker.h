#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/Shared.h"
#include "foundation/files/Folder.h"
#include "transfer/KnownAssets.h"

namespace tavrix {

/// The marker: what a destination remembers of the phones that copied into it. One file per phone;
/// docs/marker.md describes the format.
namespace DestinationMarker {

inline constexpr std::int64_t schemaVersion = 1;

/// A file that landed; or, during a run and after a killed run, a file that may have landed.
struct FileRecord {
  std::string path;                    ///< relative to the destination, "/" between parts
  std::uint64_t size = 0;              ///< bytes on disk; 0, without a digest, if the file has yet
                                       ///< to land
  std::optional<std::string> sha256;   ///< of the bytes on disk, hexadecimal
  std::optional<std::string> localID;  ///< the asset's id on the phone
  std::optional<std::string> cloudID;
  /// The format ("jpeg", "h264") that was planned, if the original was kept because it cannot be
  /// converted.
  std::optional<std::string> keptInsteadOf{};
  std::optional<ShotDate> date{};  ///< when its shot was taken
  /// The volume refused the planned name, and the file has its safe form; see SafeNames.
  bool hasSafeName = false;

  /// Returns true if the file has not been seen on disk yet.
  bool isClaim() const { return size == 0 && !sha256; }

  friend bool operator==(const FileRecord&, const FileRecord&) = default;
};

/// How the names of folders were made: the settings in effect by their names, as texts. A later run
/// with an equal value gives its folders names that may differ only because there are other shots.
using FolderMaking = std::map<std::string, std::string, std::less<>>;

/// How the name of a folder was made.
struct FolderNote {
  std::string name;  ///< of the folder, directly in the destination
  Shared<FolderMaking> making;

  friend bool operator==(const FolderNote&, const FolderNote&) = default;
};

/// One phone's record.
struct PhoneRecord {
  std::int64_t schemaVersion = DestinationMarker::schemaVersion;
  std::string phoneHash;  ///< SHA-256 of the phone's serial number, hexadecimal
  std::string label;      ///< the phone's name as shown
  std::string model;
  Instant firstTransfer;
  Instant lastTransfer;
  std::vector<FileRecord> files;
  std::vector<FolderNote> folders{};  ///< by name; none for folders of earlier versions

  friend bool operator==(const PhoneRecord&, const PhoneRecord&) = default;
};

/// The records of all phones that copied into a folder.
struct Marker {
  std::vector<PhoneRecord> records;
  /// Names of files that are named like records but cannot be read or decoded. Files that a record
  /// lists as copied from a phone are not among them.
  std::vector<std::string> damaged{};

  /// Returns nullptr if the phone has no record.
  const PhoneRecord* record(const std::string& phoneHash) const;
  /// Returns the records of all other phones.
  std::vector<PhoneRecord> others(const std::string& phoneHash) const;
  std::set<std::string> labels() const;
  /// Returns the assets in one phone's record; empty if the phone has none. The marker must outlive
  /// the result.
  KnownAssets knownAssets(const std::string& phoneHash) const;

  friend bool operator==(const Marker&, const Marker&) = default;
};

/// Thrown if the folder holds a record of a newer version of the program. Nothing was changed.
class MarkerError : public std::exception {
 public:
  MarkerError(std::string fileName, std::int64_t version)
      : fileName_(std::move(fileName)), version_(version) {}
  const std::string& fileName() const { return fileName_; }
  std::int64_t version() const { return version_; }
  const char* what() const noexcept override { return "MarkerError"; }

 private:
  std::string fileName_;
  std::int64_t version_;
};

/// Returns the folder of the destination that contains a path; empty if it is not in a folder.
std::string_view folderOf(std::string_view path);

/// Returns "phone-", the first eight characters of the hash and ".json".
std::string fileName(const std::string& phoneHash);

/// Returns true if `path` is that of a record, of a damaged record that was kept, or of the text
/// file.
bool isOwnFile(std::string_view path);

/// Limits for the files that are read as records. Anyone may put files of such names into a
/// destination.
struct Limits {
  /// Enough for several million files; this program writes no longer record.
  std::uint64_t bytesOfRecord = std::uint64_t{1} << 30U;
  /// The bytes that are read of all together.
  std::uint64_t bytesOfAll = std::uint64_t{1} << 32U;
};

/// Returns the records of a destination. A file that cannot be decoded or is too long is listed as
/// damaged. Throws MarkerError, and FileError if the folder cannot be read, if its volume does not
/// answer, or, with EFBIG, if all records together are too long.
Marker load(const Folder& destination, Limits limits = {});

/// Writes one phone's record in place of its earlier one, and the explanatory text file if it is
/// missing. A file of that name that is not a record of this phone is kept with ".damaged"
/// appended, and so is any file if `wasRead` is false: then `record` continues none. Throws
/// MarkerError, which leaves everything as it was, and FileError.
void save(Folder& destination, const PhoneRecord& record, bool wasRead = true);

/// Removes temporary files that a killed run left while it wrote a record. Throws FileError.
void removeLeftOvers(Folder& destination);

/// Returns the record after a run. Files that landed now replace earlier entries of the same path;
/// earlier entries whose files are gone are dropped. The date of the first transfer is kept, and so
/// is the digest of a file that was found unchanged. The notes of now replace earlier ones of the
/// same folder; notes of folders without files are dropped.
PhoneRecord updated(const PhoneRecord* earlier, PhoneRecord now,
                    const std::function<bool(const std::string& path)>& isStillThere);

/// Returns the JSON of a record, indented and with sorted keys.
std::string encode(const PhoneRecord& record);
/// Returns nullopt if `json` is not a record. Throws MarkerError (with an empty file name) for a
/// newer version.
std::optional<PhoneRecord> decode(std::string_view json);
/// As above, for a text of any length, which is read piece by piece. `open` returns a reader at the
/// beginning of the text; it is called again if the notes in the text are wrong.
std::optional<PhoneRecord> decode(const std::function<std::unique_ptr<ByteReader>()>& open);
/// Returns true if a text begins as encode() begins one. Such a text is decoded much faster if it
/// is whole.
bool beginsAsEncoded(std::string_view text);

}  // namespace DestinationMarker

}  // namespace tavrix
