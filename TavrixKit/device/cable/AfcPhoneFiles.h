#pragma once

#include <chrono>
#include <memory>
#include <stop_token>

#include "device/cable/AfcClient.h"
#include "device/cable/Phones.h"

namespace tavrix {

/// Returns the files behind an open connection. Each call waits for its answer at most `patience`,
/// and stops waiting when `stop` is requested.
std::unique_ptr<PhoneFiles> afcPhoneFiles(std::shared_ptr<AfcClient> client,
                                          std::chrono::milliseconds patience,
                                          const std::stop_token& stop);

}  // namespace tavrix
