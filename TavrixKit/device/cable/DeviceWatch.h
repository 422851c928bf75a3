#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "device/cable/DeviceState.h"

namespace tavrix {

/// The result of a scan of the cable.
struct CableView {
  bool hasService = true;  ///< false if no service provides phones
  std::vector<PhoneOnCable> phones;

  friend bool operator==(const CableView&, const CableView&) = default;
};

/// The rules by which the state of the device watcher follows events. A watch is a value, and each
/// event yields the next value. The phone that came first stays the one that is read until it
/// leaves; all other phones are in `others`. Every reading has a number; events from a reading that
/// is over are ignored.
struct DeviceWatch {
  struct CableSeen {
    CableView cable;
  };
  struct ItemsFound {
    std::uint64_t reading = 0;
    std::uint64_t count = 0;
  };
  struct MetadataRead {
    std::uint64_t reading = 0;
    MetadataPass::Progress progress;
  };
  struct ReadingDone {
    std::uint64_t reading = 0;
    Shared<std::vector<MediaAsset>> assets;
    Shared<FolderCatalogue> catalogue;
  };
  /// The phone refused to list its folder of pictures.
  struct FolderRefused {
    std::uint64_t reading = 0;
  };
  struct ReadingLost {
    std::uint64_t reading = 0;
    PhoneError::Kind kind = PhoneError::Kind::gone;
  };
  /// Copying could not reach the phone that was ready.
  struct PhoneLost {};
  struct StopAsked {};
  /// A reading that was stopped or failed must start again.
  struct StartAsked {};
  using Event = std::variant<CableSeen, ItemsFound, MetadataRead, ReadingDone, FolderRefused,
                             ReadingLost, PhoneLost, StopAsked, StartAsked>;

  /// The actions that an event requires.
  struct Orders {
    bool endReading = false;             ///< end the one in progress before any other begins
    std::optional<PhoneOnCable> read{};  ///< begin the reading with the number `reading`
    /// The known data of the phone is out of date, and the phone must be asked again.
    bool lookAnew = false;

    friend bool operator==(const Orders&, const Orders&) = default;
  };
  struct Next;

  DeviceState state;
  std::optional<PhoneOnCable> phone;  ///< the one that the state describes
  std::vector<PhoneOnCable> others;   ///< all other phones on the cable
  std::uint64_t reading = 0;          ///< the number of the last reading
  bool isReading = false;

  /// Returns the watch after an event, and what to do. `wanted` is the identifier or serial number
  /// of the only phone to read, in any case and with or without hyphens; empty for any phone.
  /// `expected` is the expected size of the phone's catalogue, if known.
  static Next after(DeviceWatch watch, Event event, const std::string& wanted = {},
                    std::optional<std::uint64_t> expected = std::nullopt);

  friend bool operator==(const DeviceWatch&, const DeviceWatch&) = default;
};

struct DeviceWatch::Next {
  DeviceWatch watch;
  Orders orders;
  bool isNewState = false;
};

/// Returns the state of a phone for which a call failed with `kind`; `unreachable` if it has gone.
PhoneState stateOf(PhoneError::Kind kind);

/// Returns the name of a phone to show to the user.
std::string deviceNameOf(const PhoneOnCable& phone);

}  // namespace tavrix
