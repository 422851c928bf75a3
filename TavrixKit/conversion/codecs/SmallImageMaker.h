#pragma once

#include "conversion/SmallImage.h"

namespace tavrix {

/// Decodes, reduces, turns and encodes one picture. May modify the bytes of the request. Must run
/// in a process of its own (PictureDecoder), because the decoding libraries cannot be trusted with
/// foreign files. Throws ConversionError.
SmallImage makeSmallImage(PictureRequest& request);

}  // namespace tavrix
