#pragma once

#include <exception>
#include <memory>
#include <string>

#include "foundation/files/Folder.h"
#include "transfer/DestinationMarker.h"
#include "transfer/DestinationView.h"

namespace tavrix {

/// Why a folder cannot be the destination.
class DestinationError : public std::exception {
 public:
  enum class Kind {
    missing,        ///< there is no such folder, and none is to be made
    parentMissing,  ///< neither it nor the folder above it exists
    notFolder,      ///< something else stands there
    insideMedia,    ///< it lies in the folder of the phone's media, or is it
    holdsSource,    ///< the phone's folder lies in it, or is it
    busy,           ///< another run is at work there
  };

  DestinationError(Kind kind, std::string path) : kind_(kind), path_(std::move(path)) {}
  Kind kind() const { return kind_; }
  const std::string& path() const { return path_; }
  const char* what() const noexcept override { return "DestinationError"; }

 private:
  Kind kind_;
  std::string path_;
};

/// The phone that a run copies from, as the destination remembers it.
struct PhoneIdentity {
  std::string hash;  ///< SHA-256 in hexadecimal
  std::string label;
  std::string model;
  bool hasSerialNumber = false;  ///< so that its ids are those of its own files alone

  friend bool operator==(const PhoneIdentity&, const PhoneIdentity&) = default;
};

/// The phone that a snapshot stands for; it has no serial number, so its name tells it apart.
PhoneIdentity snapshotPhone(const std::string& deviceName);
/// The phone that a folder stands for, when nobody has said whose it is: told apart by its place,
/// so that two phones' files are never taken for each other.
PhoneIdentity folderPhone(const std::string& folder, const std::string& deviceName);

/// Folders that a run reads and writes. Each function throws DestinationError and FileError.
namespace Destination {

/// Throws unless the destination and the source (a folder with snapshot and media) lie apart: what
/// is copied must not become part of what is copied from.
void checkApart(const std::string& source, const std::string& destination);
/// The same for a source that is nothing but media; `catalogueFolder` is what is read of it, which
/// links may lead to.
void checkApartFromFolder(const std::string& source, const std::string& catalogueFolder,
                          const std::string& destination);
/// Whether a path is that of a folder or leads into it, by whatever links, mounts and spellings.
/// Where neither exists, their names decide.
bool liesIn(const std::string& path, const std::string& folder);

/// The folder as it is; null when there is nothing of that name.
std::unique_ptr<Folder> openExisting(const std::string& path);
/// The folder, created when only its last part is missing.
std::unique_ptr<Folder> openOrCreate(const std::string& path);
/// The same, held against other runs until the object goes.
std::unique_ptr<Folder> openForWriting(const std::string& path);
/// The folder as it is, which must be there.
std::unique_ptr<Folder> openRequired(const std::string& path);
/// The same, held against other runs until the object goes.
std::unique_ptr<Folder> openRequiredForWriting(const std::string& path);
/// Whether a run is at work in the folder at this moment.
bool isBusy(const std::string& path);

/// What lies in a destination and whose it is. Throws MarkerError too.
using Content = DestinationContent;
Content read(const Folder& destination, const PhoneIdentity& phone);

}  // namespace Destination

}  // namespace tavrix
