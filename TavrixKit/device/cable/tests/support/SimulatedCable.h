#pragma once

#include <stdlib.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "device/cable/Phones.h"
#include "device/simulator/PhoneSimulator.h"
#include "foundation/tests/support/TemporaryFolder.h"

namespace tavrix {

/// A cable with simulated phones, which the program finds instead of those of the machine. The
/// files of each phone are in a folder of its own, "phone0", "phone1", ….
class SimulatedCable {
 public:
  /// The address never changes, because the environment must not change while threads look for
  /// phones.
  SimulatedCable() { ::setenv("USBMUXD_SOCKET_ADDRESS", ("UNIX:" + (folder_ / "mux")).c_str(), 1); }
  ~SimulatedCable() { unplugAll(); }

  void write(const std::string& path, const std::string& content, int phone = 0) const {
    folder_.write("phone" + std::to_string(phone) + "/DCIM/" + path, content);
  }
  /// Returns the browser through which programs see the cable.
  PhoneBrowser& browser() const { return *browser_; }
  /// Replaces the browser by one that waits at most `patience` for an answer.
  void setPatience(std::chrono::milliseconds patience) { browser_ = Phones::openBrowser(patience); }
  std::string root(int phone = 0) const { return folder_ / ("phone" + std::to_string(phone)); }
  /// Plugs in one phone, which `change` adapts to the test.
  PhoneSimulator& plugIn(const std::function<void(SimulatedPhone&)>& change = {}) {
    SimulatedPhone phone;
    phone.root = root();
    if (change) change(phone);
    return plugInAll({phone});
  }
  PhoneSimulator& plugInAll(std::vector<SimulatedPhone> phones) {
    unplugAll();
    simulator_ = std::make_unique<PhoneSimulator>(folder_ / "mux", std::move(phones));
    return *simulator_;
  }
  /// Unplugs all phones; the service that provides phones ends, too.
  void unplugAll() { simulator_.reset(); }

 private:
  TemporaryFolder folder_;
  std::unique_ptr<PhoneSimulator> simulator_;
  std::unique_ptr<PhoneBrowser> browser_ =
      Phones::openBrowser(std::chrono::seconds{60});  // a slow machine must not look like a hang
};

}  // namespace tavrix
