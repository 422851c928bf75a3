#pragma once

#include "foundation/json/JsonWriter.h"
#include "library/Library.h"

namespace tavrix::cli {

/// Writes the field "explanation" of an open object if the library has reasons.
void writeReasons(JsonWriter& json, const Library& library);

}  // namespace tavrix::cli
