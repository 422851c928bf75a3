#include "device/simulator/SimulatorArguments.h"

#include <charconv>

namespace tavrix {
namespace {

using Fault = SimulatedPhone::Fault;
using Trust = SimulatedPhone::Trust;

std::optional<std::int64_t> parseNumber(std::string_view text) {
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool isWhole = error == std::errc{} && end == text.data() + text.size();
  if (!isWhole || number < 0) return std::nullopt;
  return number;
}

bool setTrust(SimulatedPhone& phone, std::string_view text) {
  constexpr std::pair<std::string_view, Trust> words[] = {{"trusted", Trust::trusted},
                                                          {"asking", Trust::asking},
                                                          {"pending", Trust::pending},
                                                          {"denied", Trust::denied}};
  for (const auto& [word, trust] : words) {
    if (word != text) continue;
    phone.trust = trust;
    return true;
  }
  return false;
}

std::optional<Fault::Kind> faultOf(std::string_view option) {
  if (option == "--leave-at-call") return Fault::Kind::leaves;
  if (option == "--stall-at-call") return Fault::Kind::stalls;
  if (option == "--lose-answer-at-call") return Fault::Kind::losesAnswer;
  return std::nullopt;
}

bool setNumber(SimulatedPhone& phone, std::string_view option, std::string_view text) {
  const auto number = parseNumber(text);
  if (!number) return false;
  const auto count = static_cast<std::uint64_t>(*number);
  if (option == "--latency-us") {
    phone.latency = std::chrono::microseconds{*number};
  } else if (option == "--vanish-after") {
    phone.vanishesAfterBytes = count;
  } else if (option == "--hang-after") {
    phone.hangsAfterBytes = count;
  } else if (option == "--return-after-ms") {
    phone.returnsAfter = std::chrono::milliseconds{*number};
  } else if (const auto fault = faultOf(option)) {
    phone.fault = {*fault, count};
  } else {
    return false;
  }
  return true;
}

bool setOption(SimulatedPhone& phone, std::string_view option, std::string_view value) {
  if (option == "--name") {
    phone.name = value;
  } else if (option == "--serial") {
    phone.serialNumber = value;
  } else if (option == "--device-id") {
    phone.deviceID = value;
  } else if (option == "--unreadable") {
    phone.unreadable.emplace_back(value);
  } else if (option == "--trust") {
    return setTrust(phone, value);
  } else {
    return setNumber(phone, option, value);
  }
  return true;
}

}  // namespace

const char* const SimulatorArguments::usage =
    "Usage: tavrix-phone-simulator ROOT SOCKET [OPTION…]\n"
    "A phone whose DCIM is ROOT/DCIM, on a socket that programs find through\n"
    "USBMUXD_SOCKET_ADDRESS=UNIX:SOCKET. It stays until it is interrupted.\n\n"
    "  --name TEXT, --serial TEXT, --device-id TEXT\n"
    "  --trust trusted|asking|pending|denied   what it says to a computer; trusted by default\n"
    "  --locked                                its files need it unlocked\n"
    "  --no-tls                                speaks unencrypted\n"
    "  --latency-us N                          microseconds before each answer on files\n"
    "  --vanish-after BYTES                    leaves the cable when it sent so much of files\n"
    "  --hang-after BYTES                      answers nothing any more when it sent so much of\n"
    "                                          files, or ever with 0, and stays on the cable\n"
    "  --leave-at-call N                       leaves the cable after N calls, before an answer\n"
    "  --stall-at-call N                       answers nothing any more after N calls\n"
    "  --lose-answer-at-call N                 ends the connection instead of an answer after N "
    "calls\n"
    "  --return-after-ms N                     comes back, or answers again, so many milliseconds\n"
    "                                          later\n"
    "  --unreadable ENDING                     files and folders so named cannot be read; "
    "repeatable\n";

std::optional<SimulatorArguments> SimulatorArguments::parse(
    const std::vector<std::string_view>& words) {
  SimulatorArguments arguments;
  std::vector<std::string_view> operands;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (words[i] == "--locked") {
      arguments.phone.isLocked = true;
    } else if (words[i] == "--no-tls") {
      arguments.phone.usesTLS = false;
    } else if (!words[i].starts_with("--")) {
      operands.push_back(words[i]);
    } else if (i + 1 == words.size() || !setOption(arguments.phone, words[i], words[i + 1])) {
      return std::nullopt;
    } else {
      ++i;
    }
  }
  if (operands.size() != 2) return std::nullopt;
  arguments.phone.root = operands[0];
  arguments.socketPath = operands[1];
  return arguments;
}

}  // namespace tavrix
