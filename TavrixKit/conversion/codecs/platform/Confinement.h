#pragma once

#include <chrono>

#include "conversion/ConversionProcess.h"
#include "conversion/PictureDecoder.h"

namespace tavrix {

/// Gives up, until this process ends, everything that a decoder does not need: memory, processor
/// time and output beyond the limits, new privileges, core files, opening files, sockets, other
/// programs and other processes. Threads stay possible. The process ends with its parent. Returns
/// false if the system refuses one of the restrictions.
bool confineProcess(const ConversionLimits& limits);
/// As above, for a process that decodes pictures. Its processor time is that of its whole life. It
/// ends when its parent closes the socket, not with the thread that started it.
bool confineProcess(const PictureLimits& limits);

/// Limits the processor time from now on, within the time of the whole life. Exceeding it ends the
/// process. Returns false if the system refuses.
bool grantProcessorTime(std::chrono::seconds time);

}  // namespace tavrix
