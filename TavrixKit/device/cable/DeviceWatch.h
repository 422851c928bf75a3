#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "device/DeviceState.h"

namespace tavrix {

/// What a look at the cable found.
struct CableView {
  bool hasService = true;  ///< false: nobody hands phones over
  std::vector<PhoneOnCable> phones;

  friend bool operator==(const CableView&, const CableView&) = default;
};

/// The rules by which the state of the device watcher follows what happens: a value, and each event
/// gives the next one. The phone that came first stays the one that is read until it leaves; the
/// rest are the others. Every reading has a number, and what a reading that is over still tells
/// counts for nothing.
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
    std::vector<MediaAsset> assets;
    Shared<FolderCatalogue> catalogue;
  };
  /// The phone refused to have its folder of pictures listed.
  struct FolderRefused {
    std::uint64_t reading = 0;
  };
  struct ReadingLost {
    std::uint64_t reading = 0;
    PhoneError::Kind kind = PhoneError::Kind::gone;
  };
  /// Copying found that there is no way to the phone that was ready.
  struct PhoneLost {};
  struct StopAsked {};
  /// Reading that was stopped, or failed, shall begin anew.
  struct StartAsked {};
  using Event = std::variant<CableSeen, ItemsFound, MetadataRead, ReadingDone, FolderRefused,
                             ReadingLost, PhoneLost, StopAsked, StartAsked>;

  /// What is to be done about an event.
  struct Orders {
    bool endReading = false;             ///< the one that was under way; before any other begins
    std::optional<PhoneOnCable> read{};  ///< begin the reading with the number `reading`
    /// What was seen of the phone is out of date, and it is to be asked anew.
    bool lookAnew = false;

    friend bool operator==(const Orders&, const Orders&) = default;
  };
  struct Next;

  DeviceState state;
  std::optional<PhoneOnCable> phone;  ///< the one that the state is about
  std::vector<PhoneOnCable> others;   ///< on the cable besides
  std::uint64_t reading = 0;          ///< the number of the last reading
  bool isReading = false;

  /// `wanted` is the identifier or serial number of the only phone that is to be read, empty when
  /// any is; `expected` is what is known of the size of a phone's catalogue.
  static Next after(DeviceWatch watch, Event event, const std::string& wanted = {},
                    std::optional<std::uint64_t> expected = std::nullopt);

  friend bool operator==(const DeviceWatch&, const DeviceWatch&) = default;
};

struct DeviceWatch::Next {
  DeviceWatch watch;
  Orders orders;
  bool isNewState = false;
};

/// The state of a phone that answered a call so; `unreachable` for one that has gone.
PhoneState stateOf(PhoneError::Kind kind);

/// The name of a phone for people.
std::string deviceNameOf(const PhoneOnCable& phone);

}  // namespace tavrix
