#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

#include "device/cable/DeviceState.h"
#include "device/folders/FolderCatalogue.h"
#include "model/ConnectedSource.h"
#include "settings/Settings.h"

namespace tavrix {

/// The settings and services that reading a catalogue uses.
struct ReadingSetup {
  TimeZone zone = TimeZone::utc();  ///< for dates without an offset
  std::optional<std::string>
      cacheDirectory{};  ///< of the metadata cache; if absent, nothing is kept
  std::function<Instant()> now{};
  Log* log = nullptr;  ///< if null, nothing is logged
  /// Called while metadata is read, on the reading thread.
  std::function<void(const MetadataPass::Progress&)> progress{};
  std::stop_token stop{};
};

/// The source of pictures that the user named: a folder with a snapshot, a folder that stands
/// in for a phone ("card"), or a phone on the cable. Its catalogue is read once; its files are
/// opened after that. Used by one thread.
class PictureSource {
 public:
  enum class Kind { snapshot, card, phone };

  virtual ~PictureSource() = default;

  virtual Kind kind() const = 0;
  /// Reads the catalogue. If `stop` is requested, the catalogue is incomplete. Throws SnapshotError
  /// or FileError for a folder, PhoneNotReady for a phone.
  virtual FolderCatalogue readCatalogue(const ReadingSetup& reading) = 0;
  /// Returns true if names may date files: those of a card, whose own dates a copy may have
  /// changed, unless the user turned that off.
  DatesFromNames datesFromNames(const Settings::Gathering& settings) const {
    const bool isUsed = kind() == Kind::card && settings.datesFromNames;
    return isUsed ? DatesFromNames::used : DatesFromNames::ignored;
  }
  /// Returns the name that destinations and records use for the phone: `givenName`, else the
  /// phone's own, else "iPhone".
  virtual std::string nameOr(const std::optional<std::string>& givenName) const;
  /// Returns how destinations recognise the source. A card or snapshot with a given name is
  /// recognised by that name.
  virtual PhoneIdentity identity(const std::optional<std::string>& givenName) const = 0;
  /// Returns access to the files of the catalogue that was read.
  virtual std::shared_ptr<const SourceFiles> files() const = 0;
};

/// Returns true if `source` names a phone on the cable: "phone" or "phone:SERIAL". A folder with
/// such a name is written as "./phone".
bool isPhone(std::string_view source);
/// Returns the serial number or identifier in "phone:SERIAL", or "" if the first phone will do.
std::string wantedNumber(std::string_view source);

/// Returns the source that the user named. Decides by looking at the folder: one with a
/// "snapshot.json" is a snapshot even if it also looks like a card, and one that is neither is
/// treated as a snapshot that is missing. `browser` may be null; it must outlive the source.
std::unique_ptr<PictureSource> openPictureSource(const std::string& source, PhoneBrowser* browser);

/// Returns the source in the form that the model takes. Must be called after its catalogue was
/// read.
ConnectedSource connectedSource(const PictureSource& source, std::vector<MediaAsset> assets,
                                const TimeZone& zone, std::uint64_t unreadFolders,
                                const std::optional<std::string>& givenName);

}  // namespace tavrix
