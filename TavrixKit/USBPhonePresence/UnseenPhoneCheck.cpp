#include "USBPhonePresence/UnseenPhoneCheck.h"

namespace tavrix {
namespace {

/// The delay of the scheduled check, which must rather come a little late than a moment too early.
constexpr std::chrono::milliseconds margin{100};

double secondsOf(UnseenPhoneCheck::Duration duration) {
  return std::chrono::duration<double>(duration).count();
}

}  // namespace

UnseenPhoneCheck::Next UnseenPhoneCheck::updated(bool isPhoneOnBus, bool browserHasDevice,
                                                 Moment now, Log& log) const {
  Next next{*this, std::nullopt};
  UnseenPhoneCheck& check = next.check;
  if (!isPhoneOnBus || browserHasDevice) {
    if (unseenSince) writeLog(log, "usb: hand-over wait over");
    check.unseenSince.reset();
    check.phoneOnCableButUnseen = false;
    return next;
  }
  if (!check.unseenSince) check.unseenSince = now;
  const Duration elapsed = now - *check.unseenSince;
  if (elapsed >= patience) {
    check.phoneOnCableButUnseen = true;
    if (!phoneOnCableButUnseen) {
      writeLog(log, "usb: iPhone on the bus for {:.1f} s, nothing from the browser",
               secondsOf(elapsed));
    }
  } else if (!check.unseenCheckScheduled) {
    check.unseenCheckScheduled = true;
    next.checkAfter = patience - elapsed + margin;
  }
  return next;
}

UnseenPhoneCheck::Next UnseenPhoneCheck::checkedAgain(bool isPhoneOnBus, bool browserHasDevice,
                                                      Moment now, Log& log) const {
  UnseenPhoneCheck check = *this;
  check.unseenCheckScheduled = false;
  return check.updated(isPhoneOnBus, browserHasDevice, now, log);
}

}  // namespace tavrix
