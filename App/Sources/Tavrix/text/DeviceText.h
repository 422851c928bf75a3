#pragma once

#include <string>

#include "device/cable/DeviceState.h"
#include "foundation/Sentence.h"

namespace tavrix {

/// Returns the sentence for the state of the phone on the cable: its progress, or the obstacle and
/// what to do about it. Returns an empty text for a phone that is ready.
std::string deviceText(Language language, const DeviceState& state);

/// Returns the obstacle on the way to the phone and what to do about it, as the beginning of a
/// sentence. Returns an empty text for a phone that is ready.
std::string obstacleText(Language language, const std::string& deviceName, PhoneState state);
/// As above, for the state of the watcher. Returns an empty text if the state is no obstacle.
std::string obstacleText(Language language, const DeviceState& state);
/// As obstacleText(), for a phone to which the connection was lost.
std::string lossText(Language language, const std::string& deviceName, PhoneError::Kind kind);
/// Returns the sentence that begins with `obstacle` and ends with the promise to carry on.
std::string waitingText(Language language, const std::string& obstacle);

/// Returns the sentence for a phone that is on the bus, but that the system does not pass on.
std::string unseenPhoneText(Language language);

}  // namespace tavrix
