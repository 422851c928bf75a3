#include <signal.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <system_error>

#include "device/simulator/PhoneSimulator.h"
#include "device/simulator/SimulatorArguments.h"
#include "foundation/files/FileError.h"

namespace {

int simulate(const tavrix::SimulatorArguments& arguments) {
  sigset_t ends;
  sigemptyset(&ends);
  sigaddset(&ends, SIGINT);
  sigaddset(&ends, SIGTERM);
  // Blocked before any other thread starts, so that these signals end none of them.
  ::pthread_sigmask(SIG_BLOCK, &ends, nullptr);
  const tavrix::PhoneSimulator simulator{arguments.socketPath, {arguments.phone}};
  std::printf("USBMUXD_SOCKET_ADDRESS=%s\n", simulator.address().c_str());
  std::fflush(stdout);
  int number = 0;
  ::sigwait(&ends, &number);
  std::printf("%s file calls\n", std::to_string(simulator.fileCalls()).c_str());
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string_view> words(argv + 1, argv + argc);
  if (std::find(words.begin(), words.end(), "--help") != words.end()) {
    std::fputs(tavrix::SimulatorArguments::usage, stdout);
    return 0;
  }
  const auto arguments = tavrix::SimulatorArguments::parse(words);
  if (!arguments) {
    std::fputs(tavrix::SimulatorArguments::usage, stderr);
    return 2;
  }
  try {
    return simulate(*arguments);
  } catch (const tavrix::FileError& error) {
    std::fprintf(stderr, "tavrix-phone-simulator: %s: %s\n", error.path().c_str(),
                 std::generic_category().message(error.code()).c_str());
  } catch (const std::exception& error) {
    std::fprintf(stderr, "tavrix-phone-simulator: %s\n", error.what());
  }
  return 1;
}
