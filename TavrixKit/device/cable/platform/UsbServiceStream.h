#pragma once

#include <memory>

#include "device/cable/AfcClient.h"
#include "device/cable/platform/PhoneLibrary.h"

namespace tavrix {

/// Connects to a service that a phone has started, encrypted if the service requires it. The
/// connection ends after 10 s of silence. Throws PhoneError (unreachable).
std::unique_ptr<ServiceStream> connectToService(idevice_t device,
                                                const lockdownd_service_descriptor& service);

}  // namespace tavrix
