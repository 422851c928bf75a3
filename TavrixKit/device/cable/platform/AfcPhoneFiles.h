#pragma once

#include <chrono>
#include <memory>
#include <stop_token>

#include "device/Phones.h"
#include "device/platform/PhoneLibrary.h"

namespace tavrix {

/// The files behind an open connection (Apple File Conduit). Each call waits for its answer no
/// longer than `patience`, and not when `stop` is asked for.
std::unique_ptr<PhoneFiles> afcPhoneFiles(std::shared_ptr<afc_client_private> client,
                                          std::chrono::milliseconds patience,
                                          const std::stop_token& stop);

}  // namespace tavrix
