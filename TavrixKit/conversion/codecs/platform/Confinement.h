#pragma once

#include "conversion/ConversionProcess.h"

namespace tavrix {

/// Gives up, until this process ends, everything that a decoder does not need: memory, processor
/// time and output beyond the limits, new privileges, core files, opening files, sockets, other
/// programs and other processes. Threads stay possible. The process ends with its parent. Returns
/// false if the system refuses one of the restrictions.
bool confineProcess(const ConversionLimits& limits);

}  // namespace tavrix
