#include "USBPhonePresence/USBPhonePresence.h"

#include <gmock/gmock.h>
#include <umockdev.h>
#include <unistd.h>

#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <mutex>

namespace tavrix {
namespace {

/// A simulated bus in place of that of the machine.
class MockBus {
 public:
  MockBus() : bed_(umockdev_testbed_new()) {}
  ~MockBus() { g_object_unref(bed_); }
  MockBus(const MockBus&) = delete;
  MockBus& operator=(const MockBus&) = delete;

  /// Adds a device and returns its path on the bus.
  std::string add(const std::string& vendor, const char* product) {
    const std::string name = "1-" + std::to_string(++count_);
    const std::string message = vendor.substr(vendor.find_first_not_of('0')) + "/12a8/1507";
    gchar* const path = umockdev_testbed_add_device(
        bed_, "usb", name.c_str(), nullptr, "idVendor", vendor.c_str(), "idProduct", "12a8",
        product == nullptr ? nullptr : "product", product, nullptr, "DEVTYPE", "usb_device",
        "PRODUCT", message.c_str(), nullptr);
    if (product == nullptr) {
      umockdev_testbed_set_property(bed_, path, "DEVTYPE", "usb_device");
      umockdev_testbed_set_property(bed_, path, "PRODUCT", message.c_str());
    }
    const std::string result = path;
    g_free(path);
    return result;
  }
  void remove(const std::string& path) {
    umockdev_testbed_uevent(bed_, path.c_str(), "remove");
    umockdev_testbed_remove_device(bed_, path.c_str());
  }

 private:
  UMockdevTestbed* bed_;
  int count_ = 0;
};

/// Counts changes and waits for them.
class Changes {
 public:
  std::function<void()> counter() {
    return [this] {
      const std::lock_guard lock{mutex_};
      ++count_;
      changed_.notify_all();
    };
  }
  bool reach(int count) {
    std::unique_lock lock{mutex_};
    return changed_.wait_for(lock, std::chrono::seconds{10}, [&] { return count_ >= count; });
  }
  int count() {
    const std::lock_guard lock{mutex_};
    return count_;
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  int count_ = 0;
};

TEST(USBPhonePresence, isPhoneOnBus_goesByMakerAndProductName) {
  struct Row {
    const char* vendor;
    const char* product;
    bool isPhone;
  };
  constexpr Row rows[] = {
      {"05ac", "iPhone", true}, {"05ac", "iPad", true},    {"05ac", "Somebody's iPhone", true},
      {"05ac", "iPod", false},  {"05ac", "IPHONE", false}, {"05ac", "Magic Keyboard", false},
      {"05ac", nullptr, false}, {"18d1", "iPhone", false}, {"5ac0", "iPad", false},
  };
  for (const Row& row : rows) {
    MockBus bus;
    bus.add(row.vendor, row.product);
    EXPECT_EQ(openUSBBus()->isPhoneOnBus(), row.isPhone)
        << row.vendor << ' ' << (row.product == nullptr ? "" : row.product);
  }
}

TEST(USBPhonePresence, isPhoneOnBus_findsThePhoneAmongOthersUntilItLeaves) {
  MockBus bus;
  const auto presence = openUSBBus();
  EXPECT_FALSE(presence->isPhoneOnBus());
  bus.add("05ac", "Magic Keyboard");
  bus.add("18d1", "iPhone-like");
  const std::string phone = bus.add("05ac", "iPhone");
  bus.add("1d6b", "Hub");
  EXPECT_TRUE(presence->isPhoneOnBus());
  bus.remove(phone);
  EXPECT_FALSE(presence->isPhoneOnBus());
}

TEST(USBPhonePresence, start_tellsOfArrivalAndRemovalOfTheMakersDevicesAlone) {
  MockBus bus;
  const auto presence = openUSBBus();
  Changes changes;
  presence->start(changes.counter());
  const std::string stick = bus.add("18d1", "iPhone");
  const std::string phone = bus.add("05ac", "iPhone");
  ASSERT_TRUE(changes.reach(1));
  EXPECT_TRUE(presence->isPhoneOnBus());
  bus.remove(stick);
  bus.remove(phone);
  ASSERT_TRUE(changes.reach(2));
  bus.add("05ac", "iPad");
  ASSERT_TRUE(changes.reach(3));
  EXPECT_TRUE(presence->isPhoneOnBus());
  EXPECT_EQ(changes.count(), 3);
}

TEST(USBPhonePresence, destroyed_tellsNothingMore) {
  MockBus bus;
  Changes changes;
  auto presence = openUSBBus();
  presence->start(changes.counter());
  presence.reset();
  bus.add("05ac", "iPhone");
  EXPECT_EQ(changes.count(), 0);
}

}  // namespace
}  // namespace tavrix

/// Loads the library of the mock bus before all others; only then does it replace the bus of the
/// system.
int main(int argc, char** argv) {
  const char* const loaded = std::getenv("LD_PRELOAD");
  const std::string library = "libumockdev-preload.so.0";
  if (loaded == nullptr || std::string_view{loaded}.find(library) == std::string_view::npos) {
    ::setenv("LD_PRELOAD", library.c_str(), 1);
    const char* const given = std::getenv("ASAN_OPTIONS");
    const std::string options = given == nullptr ? "" : std::string{given} + ":";
    ::setenv("ASAN_OPTIONS", (options + "verify_asan_link_order=0").c_str(), 1);
    ::execv("/proc/self/exe", argv);
    return EXIT_FAILURE;
  }
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
