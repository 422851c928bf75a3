#pragma once

#include <libimobiledevice/libimobiledevice.h>
#include <libimobiledevice/lockdown.h>
#include <plist/plist.h>
#include <signal.h>

#include <memory>

namespace tavrix {

/// Blocks SIGPIPE on this thread while it exists, so that a write to a phone that has left fails
/// instead of ending the program. The library does not prevent the signal itself when it writes to
/// encrypted connections.
class BrokenPipeGuard {
 public:
  BrokenPipeGuard() {
    sigset_t pending;
    sigpending(&pending);
    wasPending_ = sigismember(&pending, SIGPIPE) == 1;
    sigemptyset(&pipe_);
    sigaddset(&pipe_, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &pipe_, &before_);
  }
  ~BrokenPipeGuard() {
    const timespec atOnce{};
    if (!wasPending_) {
      while (sigtimedwait(&pipe_, nullptr, &atOnce) > 0) {
      }
    }
    pthread_sigmask(SIG_SETMASK, &before_, nullptr);
  }
  BrokenPipeGuard(const BrokenPipeGuard&) = delete;
  BrokenPipeGuard& operator=(const BrokenPipeGuard&) = delete;

 private:
  sigset_t pipe_{};
  sigset_t before_{};
  bool wasPending_ = false;
};

/// Frees an object of the library with `release`, which may write to the phone. The library returns
/// null if it has no object.
template <typename Object, auto release>
struct ReleaseHandle {
  void operator()(Object* object) const {
    const BrokenPipeGuard guard;
    release(object);
  }
};
using DeviceHandle = std::unique_ptr<idevice_private, ReleaseHandle<idevice_private, idevice_free>>;
using LockdownHandle =
    std::unique_ptr<lockdownd_client_private,
                    ReleaseHandle<lockdownd_client_private, lockdownd_client_free>>;
using ServiceHandle =
    std::unique_ptr<lockdownd_service_descriptor,
                    ReleaseHandle<lockdownd_service_descriptor, lockdownd_service_descriptor_free>>;
using ConnectionHandle =
    std::unique_ptr<idevice_connection_private,
                    ReleaseHandle<idevice_connection_private, idevice_disconnect>>;
using PropertyNode = std::unique_ptr<void, ReleaseHandle<void, plist_free>>;

}  // namespace tavrix
