#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "device/cable/Phones.h"
#include "device/folders/FolderCatalogue.h"
#include "foundation/Shared.h"
#include "media/MediaAsset.h"

namespace tavrix {

/// The progress of the phone on the cable towards a catalogue. Reasons are values; the program
/// chooses the words for them. A phone without a name is called "iPhone".
struct DeviceState {
  /// The user must unlock the phone.
  struct Locked {
    std::string deviceName;
    friend bool operator==(const Locked&, const Locked&) = default;
  };
  /// The phone is present and about to be read, or waits for an answer to its question whether to
  /// trust this computer.
  struct Connecting {
    std::string deviceName;
    bool awaitsTrust = false;
    friend bool operator==(const Connecting&, const Connecting&) = default;
  };
  /// Its files are being listed.
  struct Enumerating {
    std::string deviceName;
    std::uint64_t itemsFound = 0;
    /// The number of items that the same phone had the last time, for comparison with `itemsFound`.
    std::optional<std::uint64_t> itemsExpected;
    friend bool operator==(const Enumerating&, const Enumerating&) = default;
  };
  struct ReadingMetadata {
    std::string deviceName;
    MetadataPass::Progress status;
    friend bool operator==(const ReadingMetadata&, const ReadingMetadata&) = default;
  };
  /// Reading ended early; what was read is in the cache.
  struct Stopped {
    enum class Reason {
      asked,      ///< the user stopped it; nothing happens until it is started again
      phoneLeft,  ///< reading starts again when the phone is back
    };
    std::string deviceName;
    MetadataPass::Progress status;
    Reason reason = Reason::asked;
    friend bool operator==(const Stopped&, const Stopped&) = default;
  };
  struct Ready {
    std::string deviceName;
    Shared<std::vector<MediaAsset>> assets;
    PhoneOnCable phone;
    /// The catalogue from whose items the assets were made, in the same order.
    Shared<FolderCatalogue> catalogue;
    friend bool operator==(const Ready&, const Ready&) = default;
  };
  /// The phone cannot be reached, or no phone can.
  struct Failed {
    enum class Reason {
      noService,      ///< the service that provides phones does not answer
      trustDenied,    ///< the phone must be plugged in again
      unreachable,    ///< it does not answer as phones do
      silent,         ///< it does not answer at all
      folderRefused,  ///< it refuses to list its pictures; tried again on request or when it is
                      ///< plugged in again
    };
    Reason reason = Reason::noService;
    std::string deviceName;  ///< empty if there is no phone
    friend bool operator==(const Failed&, const Failed&) = default;
  };
  /// There is no phone.
  struct Waiting {
    friend bool operator==(const Waiting&, const Waiting&) = default;
  };
  using Kind = std::variant<Waiting, Locked, Connecting, Enumerating, ReadingMetadata, Stopped,
                            Ready, Failed>;

  Kind kind;

  template <typename K>
  const K* as() const {
    return std::get_if<K>(&kind);
  }
  template <typename K>
  bool is() const {
    return as<K>() != nullptr;
  }

  friend bool operator==(const DeviceState&, const DeviceState&) = default;
};

}  // namespace tavrix
