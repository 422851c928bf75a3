#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "device/FolderCatalogue.h"
#include "device/Phones.h"
#include "foundation/Shared.h"
#include "media/MediaAsset.h"

namespace tavrix {

/// How far the phone on the cable is on its way to a catalogue. Reasons are values; the words for
/// them are the program's. A phone that tells no name is called by its identifier.
struct DeviceState {
  /// It is to be unlocked.
  struct Locked {
    std::string deviceName;
    friend bool operator==(const Locked&, const Locked&) = default;
  };
  /// It is there and about to be read, or its question whether to trust this computer stands open.
  struct Connecting {
    std::string deviceName;
    bool awaitsTrust = false;
    friend bool operator==(const Connecting&, const Connecting&) = default;
  };
  /// Its files are being listed.
  struct Enumerating {
    std::string deviceName;
    std::uint64_t itemsFound = 0;
    /// What the same phone had the last time, to show `itemsFound` against.
    std::optional<std::uint64_t> itemsExpected;
    friend bool operator==(const Enumerating&, const Enumerating&) = default;
  };
  struct ReadingMetadata {
    std::string deviceName;
    MetadataPass::Progress status;
    friend bool operator==(const ReadingMetadata&, const ReadingMetadata&) = default;
  };
  /// Reading ended before its end; what was read lies in the cache.
  struct Stopped {
    enum class Reason {
      asked,      ///< the person wanted it so; nothing happens until it is started again
      phoneLeft,  ///< reading begins again when the phone is back
    };
    std::string deviceName;
    MetadataPass::Progress status;
    Reason reason = Reason::asked;
    friend bool operator==(const Stopped&, const Stopped&) = default;
  };
  struct Ready {
    std::string deviceName;
    std::vector<MediaAsset> assets;
    PhoneOnCable phone;
    /// Its items are what the assets were made of, in their order.
    Shared<FolderCatalogue> catalogue;
    friend bool operator==(const Ready&, const Ready&) = default;
  };
  /// There is no way to the phone, or to any.
  struct Failed {
    enum class Reason {
      noService,      ///< what hands phones over does not answer
      trustDenied,    ///< it is to be plugged in anew
      unreachable,    ///< it does not answer as phones do
      silent,         ///< it does not answer at all
      folderRefused,  ///< it does not let its pictures be listed; tried again when asked or plugged
                      ///< in anew
    };
    Reason reason = Reason::noService;
    std::string deviceName;  ///< empty without a phone
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
