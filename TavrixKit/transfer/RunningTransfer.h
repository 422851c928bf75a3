#pragma once

#include "transfer/CopyVerification.h"

namespace tavrix {

/// The work of a transfer that writes into a destination while the destination is checked.
namespace RunningTransfer {

/// Takes what belongs to the running transfer out of a report, which counts it as a loss or as
/// foreign otherwise. `before` is the marker that the check used, `now` the marker as it is after
/// the check. The running transfer is taken to be that of the record that was saved last.
///
/// A recorded file becomes `beingWritten` unless it is intact if the transfer has claimed it, or if
/// its entry has changed since. A file without a record in `before` is left out if `now` records it
/// or claims its name without a number. All ".part" and staged files are left out: those of an
/// earlier run show up again after the transfer.
void leaveOut(CopyVerification::Report& report, const DestinationMarker::Marker& before,
              const DestinationMarker::Marker& now);

}  // namespace RunningTransfer

}  // namespace tavrix
