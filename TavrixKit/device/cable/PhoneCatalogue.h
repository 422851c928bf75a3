#pragma once

#include <cstdint>
#include <functional>
#include <stop_token>

#include "device/cable/Phones.h"
#include "device/folders/FolderCatalogue.h"

namespace tavrix {

namespace PhoneCatalogue {

/// Lists the pictures of a phone and reads the metadata that the cache does not have. Paths are
/// relative to DCIM. A phone without DCIM has no files. Throws PhoneError if the phone leaves
/// meanwhile; what was read until then is in the cache. Throws FileError if the phone refuses
/// access to its folder. If `stop` is requested, the catalogue is incomplete; during the listing,
/// PhoneError (stopped) may be thrown instead. Calls `found` with the number of files listed so
/// far.
FolderCatalogue read(PhoneFiles& files, MetadataPass::Setup setup, const std::stop_token& stop = {},
                     const std::function<void(std::uint64_t)>& found = {});

}  // namespace PhoneCatalogue

}  // namespace tavrix
