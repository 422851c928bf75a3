#pragma once

#include <functional>
#include <memory>
#include <string_view>

namespace tavrix {

/// Watches the USB bus itself for phones. This distinguishes a cable without a phone from a phone
/// that the system does not provide.
class USBPhonePresence {
 public:
  virtual ~USBPhonePresence() = default;

  /// Starts to call `onChange`, on a thread of its own, whenever a device of the phone's maker has
  /// been added to the bus or removed from it. Destroying the object ends the calls. Must be called
  /// only once. If the system does not report changes, there are no calls.
  virtual void start(std::function<void()> onChange) = 0;
  /// Returns true if a phone (or a tablet, which is treated alike) is on the bus now. Safe to call
  /// from any thread.
  virtual bool isPhoneOnBus() const = 0;
};

/// Returns the USB bus of this machine.
std::unique_ptr<USBPhonePresence> openUSBBus();

/// The USB vendor identifier of the phone's maker, as the system writes it.
inline constexpr std::string_view appleVendorID = "05ac";

/// Returns true if a USB product name is that of a phone or tablet. The comparison is
/// case-sensitive.
constexpr bool isPhoneProductName(std::string_view name) {
  return name.find("iPhone") != std::string_view::npos ||
         name.find("iPad") != std::string_view::npos;
}

}  // namespace tavrix
