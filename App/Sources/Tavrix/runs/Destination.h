#pragma once

#include <exception>
#include <memory>
#include <string>

#include "foundation/files/Folder.h"
#include "transfer/DestinationMarker.h"
#include "transfer/DestinationView.h"

namespace tavrix {

/// The reason why a folder cannot be the destination.
class DestinationError : public std::exception {
 public:
  enum class Kind {
    missing,        ///< the folder does not exist and must not be created
    parentMissing,  ///< neither the folder nor its parent exists
    notFolder,      ///< the path leads to something other than a folder
    insideMedia,    ///< it is inside the source, or is or is inside the folder of its media
    holdsSource,    ///< it is, or contains, the phone's folder
    busy,           ///< another run is writing to it
    changed,        ///< during a run, it is no longer the folder that the run wrote to
  };

  DestinationError(Kind kind, std::string path) : kind_(kind), path_(std::move(path)) {}
  Kind kind() const { return kind_; }
  const std::string& path() const { return path_; }
  const char* what() const noexcept override { return "DestinationError"; }

 private:
  Kind kind_;
  std::string path_;
};

/// The identity of the phone that a run copies from, as stored in the destination.
struct PhoneIdentity {
  std::string hash;  ///< SHA-256 in hexadecimal
  std::string label;
  std::string model;
  bool hasSerialNumber = false;  ///< if true, ids are unique to this phone's files

  friend bool operator==(const PhoneIdentity&, const PhoneIdentity&) = default;
};

/// Returns the identity of the phone in a snapshot. It has no serial number, so its name identifies
/// it.
PhoneIdentity snapshotPhone(const std::string& deviceName);
/// Returns the identity of the phone in a folder if the user has not named it. The path identifies
/// it, so that files of two phones are never confused.
PhoneIdentity folderPhone(const std::string& folder, const std::string& deviceName);

/// The folders that a run reads and writes. Every function throws DestinationError and FileError.
namespace Destination {

/// Throws if the destination and the source (a folder with snapshot and media) overlap: copies must
/// not become part of the source.
void checkApart(const std::string& source, const std::string& destination);
/// As checkApart(), for a source that consists of media only. `catalogueFolder` is the part that is
/// read, possibly through links.
void checkApartFromFolder(const std::string& source, const std::string& catalogueFolder,
                          const std::string& destination);
/// Returns true if the path is the folder or inside it, through any links, mounts and spellings. If
/// neither exists, compares their names.
bool liesIn(const std::string& path, const std::string& folder);

/// Opens the folder. Returns nullptr if it does not exist.
std::unique_ptr<Folder> openExisting(const std::string& path);
/// Opens the folder. Creates it if only its last path component is missing.
std::unique_ptr<Folder> openOrCreate(const std::string& path);
/// As openOrCreate(), and locks the folder against other runs while the object lives.
std::unique_ptr<Folder> openForWriting(const std::string& path);
/// Throws what openForWriting() would throw, unless the folder is only in use by another run.
/// Creates nothing.
void checkWritable(const std::string& path);
/// Opens the folder, which must exist.
std::unique_ptr<Folder> openRequired(const std::string& path);
/// As openRequired(), and locks the folder against other runs while the object lives.
std::unique_ptr<Folder> openRequiredForWriting(const std::string& path);
/// Returns true if a run is currently writing to the folder.
bool isBusy(const std::string& path);

/// Returns the files of a destination and the phones they come from. Also throws MarkerError.
using Content = DestinationContent;
Content read(const Folder& destination, const PhoneIdentity& phone);

}  // namespace Destination

}  // namespace tavrix
