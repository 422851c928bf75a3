#pragma once

#include <functional>
#include <memory>
#include <string_view>

namespace tavrix {

/// Watches the USB bus itself for phones, so that no phone on the cable can be told from a phone
/// that the system does not hand over.
class USBPhonePresence {
 public:
  virtual ~USBPhonePresence() = default;

  /// From now on calls `onChange`, on a thread of its own, whenever a device of the phone's maker
  /// came to the bus or left it; destroying the object ends that. To be called once. Where the
  /// system does not tell of changes, none are told.
  virtual void start(std::function<void()> onChange) = 0;
  /// Whether a phone (or a tablet, which is as good) is on the bus now. Safe to call from any
  /// thread.
  virtual bool isPhoneOnBus() const = 0;
};

/// The bus of this machine.
std::unique_ptr<USBPhonePresence> openUSBBus();

/// The maker's USB vendor identifier, as the system writes it.
inline constexpr std::string_view appleVendorID = "05ac";

/// Whether a USB product name is that of a phone or tablet; the case counts.
constexpr bool isPhoneProductName(std::string_view name) {
  return name.find("iPhone") != std::string_view::npos ||
         name.find("iPad") != std::string_view::npos;
}

}  // namespace tavrix
