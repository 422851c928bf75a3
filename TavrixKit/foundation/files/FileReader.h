#pragma once

#include <memory>
#include <string>

#include "foundation/json/JsonReader.h"

namespace tavrix {

/// Reads a regular file of the disk from its beginning. Throws FileError, also from read().
std::unique_ptr<ByteReader> openFileForReading(const std::string& path);

}  // namespace tavrix
