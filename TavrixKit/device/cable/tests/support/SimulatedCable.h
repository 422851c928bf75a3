#pragma once

#include <stdlib.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "device/Phones.h"
#include "device/simulator/PhoneSimulator.h"
#include "foundation/tests/support/TemporaryFolder.h"

namespace tavrix {

/// A cable with simulated phones, which the program finds in place of the machine's own. Each phone
/// has its files below a folder of its own, "phone0", "phone1", ….
class SimulatedCable {
 public:
  /// The address stays the same: once threads look for phones, nobody may change the environment.
  SimulatedCable() { ::setenv("USBMUXD_SOCKET_ADDRESS", ("UNIX:" + (folder_ / "mux")).c_str(), 1); }
  ~SimulatedCable() { unplugAll(); }

  void write(const std::string& path, const std::string& content, int phone = 0) const {
    folder_.write("phone" + std::to_string(phone) + "/DCIM/" + path, content);
  }
  /// How programs see it.
  PhoneBrowser& browser() const { return *browser_; }
  /// From now on nobody waits longer for an answer.
  void setPatience(std::chrono::milliseconds patience) { browser_ = Phones::openBrowser(patience); }
  std::string root(int phone = 0) const { return folder_ / ("phone" + std::to_string(phone)); }
  /// One phone, changed as a test needs it.
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
  /// The service that hands phones over ends, too.
  void unplugAll() { simulator_.reset(); }

 private:
  TemporaryFolder folder_;
  std::unique_ptr<PhoneSimulator> simulator_;
  std::unique_ptr<PhoneBrowser> browser_ =
      Phones::openBrowser(std::chrono::seconds{60});  // a busy machine is no phone that hangs
};

}  // namespace tavrix
