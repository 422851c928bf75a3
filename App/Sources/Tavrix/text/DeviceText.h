#pragma once

#include <string>

#include "device/DeviceState.h"
#include "foundation/Sentence.h"

namespace tavrix {

/// What the person is told of the phone on the cable: how far it is, or what is in the way and what
/// to do about it. A phone that is ready needs no words.
std::string deviceText(Language language, const DeviceState& state);

/// What is in the way to a phone of that name and what to do about it, as the beginning of a
/// sentence; nothing for one that is ready.
std::string obstacleText(Language language, const std::string& deviceName, PhoneState state);
/// The same of a phone to which the way was lost.
std::string lossText(Language language, const std::string& deviceName, PhoneError::Kind kind);
/// The sentence, with the promise to carry on.
std::string waitingText(Language language, const std::string& obstacle);

/// What is told, instead of waiting in silence, of a phone that is on the cable but unseen.
std::string unseenPhoneText(Language language);

}  // namespace tavrix
