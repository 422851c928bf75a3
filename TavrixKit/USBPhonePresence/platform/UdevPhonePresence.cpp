#include <libudev.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <array>
#include <string>
#include <thread>

#include "USBPhonePresence/USBPhonePresence.h"
#include "foundation/files/platform/FileDescriptor.h"

namespace tavrix {
namespace {

template <typename Object, Object* (*unref)(Object*)>
struct Unref {
  void operator()(Object* object) const { unref(object); }
};
using Context = std::unique_ptr<udev, Unref<udev, udev_unref>>;
using Monitor = std::unique_ptr<udev_monitor, Unref<udev_monitor, udev_monitor_unref>>;
using Enumeration = std::unique_ptr<udev_enumerate, Unref<udev_enumerate, udev_enumerate_unref>>;
using Device = std::unique_ptr<udev_device, Unref<udev_device, udev_device_unref>>;

/// Returns a text of libudev; empty if it is null.
std::string_view textOf(const char* text) { return text == nullptr ? std::string_view{} : text; }

bool isApples(udev_device* device) {
  if (textOf(udev_device_get_sysattr_value(device, "idVendor")) == appleVendorID) return true;
  // A device that has left has only the message: "5ac/12a8/1507", without leading zeros.
  return textOf(udev_device_get_property_value(device, "PRODUCT"))
      .starts_with(std::string{appleVendorID.substr(1)} + "/");
}

class UdevPhonePresence : public USBPhonePresence {
 public:
  UdevPhonePresence() : wake_(::eventfd(0, EFD_CLOEXEC)) {}

  ~UdevPhonePresence() override {
    if (!watcher_.joinable()) return;
    const std::uint64_t one = 1;
    while (::write(wake_.number(), &one, sizeof one) < 0 && errno == EINTR) {
    }
    watcher_.join();
  }

  void start(std::function<void()> onChange) override {
    const Context context{udev_new()};
    if (context == nullptr || !wake_.isOpen()) return;
    monitor_.reset(udev_monitor_new_from_netlink(context.get(), "udev"));
    if (monitor_ == nullptr) return;
    udev_monitor_filter_add_match_subsystem_devtype(monitor_.get(), "usb", "usb_device");
    if (udev_monitor_enable_receiving(monitor_.get()) < 0) return;
    watcher_ = std::thread{[this, onChange = std::move(onChange)] { watch(onChange); }};
  }

  bool isPhoneOnBus() const override {
    const Context context{udev_new()};
    if (context == nullptr) return false;
    const Enumeration devices{udev_enumerate_new(context.get())};
    if (devices == nullptr) return false;
    udev_enumerate_add_match_subsystem(devices.get(), "usb");
    udev_enumerate_add_match_sysattr(devices.get(), "idVendor", std::string{appleVendorID}.c_str());
    udev_enumerate_scan_devices(devices.get());
    udev_list_entry* entry = nullptr;
    udev_list_entry_foreach(entry, udev_enumerate_get_list_entry(devices.get())) {
      const Device device{
          udev_device_new_from_syspath(context.get(), udev_list_entry_get_name(entry))};
      if (device == nullptr) continue;
      const auto name = textOf(udev_device_get_sysattr_value(device.get(), "product"));
      if (isPhoneProductName(name)) return true;
    }
    return false;
  }

 private:
  void watch(const std::function<void()>& onChange) const {
    std::array<pollfd, 2> waited{
        {{udev_monitor_get_fd(monitor_.get()), POLLIN, 0}, {wake_.number(), POLLIN, 0}}};
    while (::poll(waited.data(), waited.size(), -1) >= 0 || errno == EINTR) {
      if ((waited[1].revents & POLLIN) != 0) return;
      if ((waited[0].revents & (POLLIN | POLLERR)) == 0) continue;
      errno = 0;
      const Device device{udev_monitor_receive_device(monitor_.get())};
      // If messages were lost, anything may have changed.
      const bool wereLost = device == nullptr && errno == ENOBUFS;
      if (wereLost || (device != nullptr && isApples(device.get()))) onChange();
    }
  }

  FileDescriptor wake_;
  Monitor monitor_;
  std::thread watcher_;
};

}  // namespace

std::unique_ptr<USBPhonePresence> openUSBBus() { return std::make_unique<UdevPhonePresence>(); }

}  // namespace tavrix
