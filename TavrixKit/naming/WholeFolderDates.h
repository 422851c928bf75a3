#pragma once

#include "grouping/GroupingMode.h"
#include "naming/NameTemplate.h"

namespace tavrix {

/// Returns the template for the name of a whole month or year: without the day and, for a year,
/// without the month. The literal before a block that is left out goes with it; if no data block
/// precedes it, the literal after it goes. Returns the template unchanged for a day, and if no data
/// block would be left.
NameTemplate withWholeDates(const NameTemplate& nameTemplate, DateGranularity unit);

}  // namespace tavrix
