#pragma once

namespace tavrix {

/// Makes a write beyond the greatest size of a file that is allowed to this process (`ulimit -f`)
/// fail with EFBIG instead of ending the process. Call it once, when the program starts.
void reportFileSizeLimit();

/// Returns true if an error code (errno) means that this process or the system has no free
/// descriptor, which may change as soon as another file is closed.
bool lacksDescriptors(int code);

/// Returns how many descriptors this process may have open.
unsigned long descriptorLimit();

}  // namespace tavrix
