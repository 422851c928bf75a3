#pragma once

#include <memory>
#include <string>

#include "foundation/json/JsonReader.h"

namespace tavrix {

/// Opens a regular file of the disk for reading from its beginning. Throws FileError; read() of the
/// result throws it, too.
std::unique_ptr<ByteReader> openFileForReading(const std::string& path);

}  // namespace tavrix
