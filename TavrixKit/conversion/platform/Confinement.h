#pragma once

#include "conversion/ConversionProcess.h"

namespace tavrix {

/// Gives away, for the rest of this process's life, what a decoder does not need: memory, processor
/// time and output beyond the limits, new privileges, core files, opening files, sockets, other
/// programs and other processes. Threads stay possible. The process ends with its parent. False
/// when the system refuses one of them.
bool confineProcess(const ConversionLimits& limits);

}  // namespace tavrix
