#pragma once

#include "Library.h"
#include "foundation/json/JsonWriter.h"

namespace tavrix::cli {

/// Writes the field "explanation" of an open object when the library has reasons.
void writeReasons(JsonWriter& json, const Library& library);

}  // namespace tavrix::cli
