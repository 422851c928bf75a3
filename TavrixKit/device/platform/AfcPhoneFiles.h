#pragma once

#include <memory>

#include "device/Phones.h"
#include "device/platform/PhoneLibrary.h"

namespace tavrix {

/// The files behind an open connection (Apple File Conduit).
std::unique_ptr<PhoneFiles> afcPhoneFiles(FilesHandle client);

}  // namespace tavrix
