// Reads arbitrary bytes as the answers of a phone. What is read must fit, and after a damaged
// answer nothing more may be received.

#include <array>
#include <cstdint>
#include <cstdlib>

#include "device/cable/AfcClient.h"

using namespace tavrix;

namespace {

struct Answers : ServiceStream {
  explicit Answers(std::string_view& all) : rest(all) {}
  bool send(std::string_view) override { return true; }
  bool receive(std::span<char> buffer) override {
    const std::size_t count = rest.copy(buffer.data(), buffer.size());
    rest.remove_prefix(count);
    return count == buffer.size();
  }
  std::string_view& rest;
};

void ask(AfcClient& client, std::size_t turn) {
  std::array<char, 16> buffer{};
  switch (turn % 6) {
    case 0:
      client.names("/");
      break;
    case 1:
      client.status("/a");
      break;
    case 2:
      client.open("/a");
      break;
    case 3:
      if (client.read({1, "/a"}, buffer) > buffer.size()) std::abort();
      break;
    case 4:
      client.seek({1, "/a"}, 5);
      break;
    default:
      client.close({1, "/a"});
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view rest{reinterpret_cast<const char*>(data), size};
  AfcClient client{std::make_unique<Answers>(rest)};
  std::size_t lost = SIZE_MAX;
  for (std::size_t turn = 0; turn < 12; ++turn) {
    try {
      ask(client, turn);
      if (lost != SIZE_MAX) std::abort();
    } catch (const FileError&) {
      if (lost != SIZE_MAX) std::abort();
    } catch (const PhoneError&) {
      if (lost != SIZE_MAX && rest.size() != lost) std::abort();
      lost = rest.size();
    }
  }
  return 0;
}
