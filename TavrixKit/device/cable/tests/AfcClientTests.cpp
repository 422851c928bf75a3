#include "device/cable/AfcClient.h"

#include <gmock/gmock.h>

#include <cerrno>

namespace tavrix {
namespace {

using testing::ElementsAre;

/// A phone whose answers are given beforehand.
struct Script {
  std::string answers;
  std::string sent;
  bool isClosed = false;
};

class ScriptStream : public ServiceStream {
 public:
  explicit ScriptStream(Script& script) : script_(script) {}
  ~ScriptStream() override { script_.isClosed = true; }
  bool send(std::string_view bytes) override {
    script_.sent += bytes;
    return true;
  }
  bool receive(std::span<char> buffer) override {
    const std::size_t count = script_.answers.copy(buffer.data(), buffer.size());
    script_.answers.erase(0, count);
    return count == buffer.size();
  }

 private:
  Script& script_;
};

std::string littleEndian(std::uint64_t number) {
  std::string bytes(8, '\0');
  for (char& byte : bytes) {
    byte = static_cast<char>(number % 256);
    number /= 256;
  }
  return bytes;
}

std::string headOf(std::uint64_t entire, std::uint64_t head, std::uint64_t number,
                   std::uint64_t operation) {
  return "CFA6LPAA" + littleEndian(entire) + littleEndian(head) + littleEndian(number) +
         littleEndian(operation);
}

std::string status(std::uint64_t number, std::uint64_t code) {
  return headOf(48, 48, number, 1) + littleEndian(code);
}

std::string data(std::uint64_t number, const std::string& body) {
  return headOf(40 + body.size(), 40, number, 2) + body;
}

std::string texts(const std::vector<std::string>& all) {
  std::string body;
  for (const std::string& text : all) body.append(text).push_back('\0');
  return body;
}

TEST(AfcClient, requests_haveTheBytesOfTheProtocolAndTheirAnswersAreRead) {
  Script script;
  AfcClient client{std::make_unique<ScriptStream>(script)};
  script.answers =
      data(1, texts({".", "..", "b.JPG", "a/b", "", "a.JPG"})) +
      data(2,
           texts({"st_size", "5", "st_ifmt", "S_IFREG", "st_mtime", "1500000000", "st_new", ""})) +
      headOf(48, 48, 3, 0x0e) + littleEndian(77) + data(4, "12345") + data(5, "") + status(6, 0) +
      status(7, 0);
  EXPECT_THAT(client.names("/D"), ElementsAre("a.JPG", "b.JPG"));
  EXPECT_EQ(client.status("/D"),
            (FileStatus{FileStatus::Type::file, 5, Instant{std::chrono::milliseconds{1500}}}));
  const AfcClient::OpenFile file = client.open("/D");
  std::string buffer(300, '.');
  EXPECT_EQ(client.read(file, buffer), 5U);
  EXPECT_EQ(buffer.substr(0, 6), "12345.");
  EXPECT_EQ(client.read(file, buffer), 0U);
  client.seek(file, 258);
  client.close(file);
  const std::string path{"/D\0", 3};
  EXPECT_EQ(script.sent, headOf(43, 43, 1, 0x03) + path + headOf(43, 43, 2, 0x0a) + path +
                             headOf(51, 51, 3, 0x0d) + littleEndian(1) + path +
                             headOf(56, 56, 4, 0x0f) + littleEndian(77) + littleEndian(300) +
                             headOf(56, 56, 5, 0x0f) + littleEndian(77) + littleEndian(300) +
                             headOf(64, 64, 6, 0x11) + littleEndian(77) + littleEndian(0) +
                             littleEndian(258) + headOf(48, 48, 7, 0x14) + littleEndian(77));
}

TEST(AfcClient, refusals_areErrorsOfTheFileAndTheConnectionGoesOn) {
  Script script;
  AfcClient client{std::make_unique<ScriptStream>(script)};
  std::uint64_t number = 0;
  for (const auto& [code, expected] :
       {std::pair{1U, EIO}, {7U, EINVAL}, {8U, ENOENT}, {9U, EISDIR}, {10U, EACCES}, {20U, EIO}}) {
    script.answers = status(++number, code);
    try {
      client.status("/DCIM/a.JPG");
      ADD_FAILURE() << code;
    } catch (const FileError& error) {
      EXPECT_EQ(error.code(), expected);
      EXPECT_EQ(error.path(), "/DCIM/a.JPG");
    }
  }
  EXPECT_THROW(client.status(std::string{"/DCIM/a.JPG\0.MOV", 16}), FileError);
  script.answers = data(++number, texts({"a.JPG"}));
  EXPECT_THAT(client.names("/DCIM"), ElementsAre("a.JPG"));
}

struct Damage {
  const char* name;
  std::string answer;
  std::function<void(AfcClient&)> call = [](AfcClient& client) { client.names("/DCIM"); };
};

TEST(AfcClient, answerThatIsDamagedOrForeign_isThePhoneGoneForGood) {
  const auto status1 = [](AfcClient& client) { client.status("/DCIM"); };
  const auto read4 = [](AfcClient& client) {
    std::string buffer(4, '\0');
    client.read({77, "/DCIM/a.JPG"}, buffer);
  };
  const std::string names = texts({"a.JPG"});
  const std::vector<Damage> damages{
      {"nothing", ""},
      {"half a head", data(1, names).substr(0, 20)},
      {"no body", data(1, names).substr(0, 40)},
      {"half a body", data(1, names).substr(0, 43)},
      {"another magic", "X" + data(1, names).substr(1)},
      {"shorter than its head", headOf(39, 39, 1, 2)},
      {"head longer than all", headOf(40 + names.size(), 41 + names.size(), 1, 2) + names},
      {"endless", headOf(~std::uint64_t{0}, 40, 1, 2) + names},
      {"of an earlier request", data(0, names)},
      {"of a later request", data(2, names)},
      {"unknown operation", headOf(40 + names.size(), 40, 1, 0x0c) + names},
      {"operation of another request", headOf(48, 48, 1, 0x0e) + littleEndian(77)},
      {"success without data", status(1, 0)},
      {"unknown status", status(1, 99)},
      {"status without a number", headOf(44, 44, 1, 1) + "\1\0\0\0"},
      {"names without an end", data(1, "a.JPG")},
      {"field without a value", data(1, texts({"st_size", "5", "st_ifmt"})), status1},
      {"more bytes than asked for", data(1, "12345"), read4},
      {"handle too short", headOf(44, 44, 1, 0x0e) + "1234",
       [](AfcClient& client) { client.open("/DCIM/a.JPG"); }},
  };
  for (const Damage& damage : damages) {
    SCOPED_TRACE(damage.name);
    Script script{damage.answer, "", false};
    AfcClient client{std::make_unique<ScriptStream>(script)};
    const auto expectGone = [&](const auto& call) {
      try {
        call(client);
        ADD_FAILURE();
      } catch (const PhoneError& error) {
        EXPECT_EQ(error.kind(), PhoneError::Kind::gone);
      }
    };
    expectGone(damage.call);
    EXPECT_TRUE(script.isClosed);
    script.sent = "";
    script.answers = data(2, "1234");
    expectGone(read4);
    EXPECT_EQ(script.sent, "");
  }
}

}  // namespace
}  // namespace tavrix
