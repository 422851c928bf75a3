#pragma once

#include <chrono>
#include <memory>
#include <stop_token>

#include "device/cable/Phones.h"
#include "device/cable/platform/PhoneLibrary.h"

namespace tavrix {

/// Returns the files behind an open connection (Apple File Conduit). Each call waits for its answer
/// at most `patience`, and stops waiting when `stop` is requested.
std::unique_ptr<PhoneFiles> afcPhoneFiles(std::shared_ptr<afc_client_private> client,
                                          std::chrono::milliseconds patience,
                                          const std::stop_token& stop);

}  // namespace tavrix
