#pragma once

#include <string>

#include "device/DeviceState.h"
#include "foundation/Sentence.h"

namespace tavrix {

/// What the person is told of the phone on the cable: how far it is, or what is in the way and what
/// to do about it. A phone that is ready needs no words.
std::string deviceText(Language language, const DeviceState& state);

/// What is told, instead of waiting in silence, of a phone that is on the cable but unseen.
std::string unseenPhoneText(Language language);

}  // namespace tavrix
