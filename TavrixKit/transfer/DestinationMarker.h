#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/files/Folder.h"
#include "transfer/KnownAssets.h"

namespace tavrix {

/// What a destination remembers of the phones that copied into it: one file per phone, described in
/// docs/marker.md.
namespace DestinationMarker {

inline constexpr std::int64_t schemaVersion = 1;

/// A file that landed; or, while a run is at work and after one that was killed, a file that it may
/// have landed.
struct FileRecord {
  std::string path;                    ///< relative to the destination, "/" between parts
  std::uint64_t size = 0;              ///< bytes on disk; 0, and no digest, of what may yet land
  std::optional<std::string> sha256;   ///< of the bytes on disk, hexadecimal
  std::optional<std::string> localID;  ///< the asset's id on the phone
  std::optional<std::string> cloudID;
  /// The format ("jpeg", "h264") that it should have had, of an original that cannot be converted.
  std::optional<std::string> keptInsteadOf{};
  std::optional<ShotDate> date{};  ///< when its shot was taken

  /// Nothing has been seen of the file yet.
  bool isClaim() const { return size == 0 && !sha256; }

  friend bool operator==(const FileRecord&, const FileRecord&) = default;
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

  friend bool operator==(const PhoneRecord&, const PhoneRecord&) = default;
};

/// The phones that copied into a folder.
struct Marker {
  std::vector<PhoneRecord> records;
  /// Names of files that ought to be records and cannot be read or decoded; a file that a record
  /// names is a phone's.
  std::vector<std::string> damaged{};

  /// Null when the phone has no record.
  const PhoneRecord* record(const std::string& phoneHash) const;
  /// The records of every other phone.
  std::vector<PhoneRecord> others(const std::string& phoneHash) const;
  std::set<std::string> labels() const;
  /// What one phone's record knows; empty when it has none.
  KnownAssets knownAssets(const std::string& phoneHash) const;

  friend bool operator==(const Marker&, const Marker&) = default;
};

/// The folder holds a record of a newer version of the program. Nothing was changed.
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

/// "phone-" and the first eight characters of the hash and ".json".
std::string fileName(const std::string& phoneHash);

/// Whether a path is that of a record, of a damaged one that was kept, or of the text file.
bool isOwnFile(std::string_view path);

/// The records in a destination. A file that does not decode counts as absent and is named. Throws
/// MarkerError, and FileError when the folder cannot be read.
Marker load(const Folder& destination);

/// Writes one phone's record in place of its earlier one, and the explanatory text file when there
/// is none. A file of that name that is no record of this phone is kept with ".damaged" appended.
/// Throws MarkerError, which leaves everything as it was, and FileError.
void save(Folder& destination, const PhoneRecord& record);

/// Removes what a killed run left of a record that it was writing. Throws FileError.
void removeLeftOvers(Folder& destination);

/// The record after a run: what landed now replaces older entries of the same path; earlier entries
/// whose files are not there any more are dropped; the first transfer keeps its date, and a file
/// that was found as it had landed earlier its digest.
PhoneRecord updated(const PhoneRecord* earlier, PhoneRecord now,
                    const std::function<bool(const std::string& path)>& isStillThere);

/// The JSON of a record: pretty, keys sorted.
std::string encode(const PhoneRecord& record);
/// Nothing for what is no record. Throws MarkerError (with an empty file name) for a newer version.
std::optional<PhoneRecord> decode(std::string_view json);

}  // namespace DestinationMarker

}  // namespace tavrix
