#pragma once

#include <stop_token>

#include "device/FolderCatalogue.h"
#include "device/Phones.h"

namespace tavrix {

namespace PhoneCatalogue {

/// Lists the pictures of a phone and reads their metadata, as far as the cache does not hold them;
/// paths are those below DCIM. A phone without DCIM has no files. Throws PhoneError when the phone
/// leaves meanwhile; what was read until then lies in the cache. Throws FileError when the phone
/// refuses its folder.
FolderCatalogue read(PhoneFiles& files, MetadataPass::Setup setup,
                     const std::stop_token& stop = {});

}  // namespace PhoneCatalogue

}  // namespace tavrix
