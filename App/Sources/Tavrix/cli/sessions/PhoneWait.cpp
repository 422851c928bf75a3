#include "cli/sessions/PhoneWait.h"

#include <chrono>
#include <condition_variable>
#include <utility>

#include "text/DeviceText.h"
#include "text/PhoneSentences.h"

namespace tavrix::cli {
namespace {

constexpr std::chrono::milliseconds interval{500};

}  // namespace

bool PhoneWait::await(const std::string& obstacle) {
  std::condition_variable_any wakes;
  std::unique_lock lock{mutex_};
  if (std::exchange(told_, obstacle) != obstacle) {
    context_.warn(waitingText(context_.language(), obstacle));
  }
  wakes.wait_for(lock, stop_, interval, [] { return false; });
  return !stop_.stop_requested();
}

bool PhoneWait::await(const std::string& deviceName, PhoneError::Kind kind) {
  return await(lossText(context_.language(), deviceName, kind));
}

void PhoneWait::phoneAnswered() {
  const std::lock_guard lock{mutex_};
  if (std::exchange(told_, {}).empty()) return;
  context_.note(say(context_.language(), sentences::phoneIsBack));
}

}  // namespace tavrix::cli
