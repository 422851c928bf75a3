#include <arpa/inet.h>
#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <signal.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <list>

#include "device/simulator/PhoneSimulator.h"
#include "device/simulator/platform/Bench.h"
#include "foundation/files/FileError.h"

namespace tavrix {
namespace simulator {
namespace {

struct MuxHead {
  std::uint32_t length = 0;
  std::uint32_t version = 1;
  std::uint32_t message = 8;  ///< a property list
  std::uint32_t tag = 0;
};

constexpr std::uint32_t largestMessage = 1 << 20;
constexpr std::uint64_t refused = 3;
constexpr std::uint64_t badDevice = 2;

/// Blocks SIGPIPE on this thread, so that writing fails if the program that reads is gone.
void ignoreBrokenPipes() {
  sigset_t set;
  sigemptyset(&set);
  sigaddset(&set, SIGPIPE);
  ::pthread_sigmask(SIG_BLOCK, &set, nullptr);
}

/// A connection of a program to the daemon, which may become one to a phone.
class MuxConnection {
 public:
  MuxConnection(Bench& bench, Stream& stream) : bench_(bench), stream_(stream) {}

  void serve() {
    MuxHead head;
    while (stream_.read({reinterpret_cast<char*>(&head), sizeof head})) {
      if (head.length < sizeof head || head.length > largestMessage) break;
      std::string text(head.length - sizeof head, '\0');
      if (!stream_.read(text)) break;
      tag_ = head.tag;
      if (!handle(PropertyList::parse(text))) break;
    }
    bench_.endListening(stream_);
  }

 private:
  bool handle(const PropertyList& request) {
    const std::string type = request.text("MessageType");
    const std::string recordID = request.text("PairRecordID");
    if (type == "ListDevices") return send(PropertyList{}.set("DeviceList", devices()));
    if (type == "ReadBUID") return send(PropertyList{}.set("BUID", systemID));
    if (type == "ReadPairRecord") {
      const auto record = bench_.pairRecord(recordID);
      return record ? send(PropertyList{}.setData("PairRecordData", *record)) : result(badDevice);
    }
    if (type == "Connect") return connect(request);
    if (type == "Listen") {
      if (!result(0)) return false;
      bench_.listen(stream_, tag_);
    } else if (type == "SavePairRecord") {
      bench_.savePairRecord(recordID, request.data("PairRecordData"));
      return result(0);
    } else if (type == "DeletePairRecord") {
      bench_.savePairRecord(recordID, std::nullopt);
      return result(0);
    }
    return true;
  }

  bool send(const PropertyList& message) { return writeMuxMessage(stream_, tag_, message); }
  bool result(std::uint64_t number) {
    return send(PropertyList{}.set("MessageType", "Result").set("Number", number));
  }

  plist_t devices() const {
    const plist_t list = plist_new_array();
    for (std::size_t i = 0; i < bench_.count(); ++i) {
      const SimulatedPhone phone = bench_.phone(i);
      if (phone.isPluggedIn) plist_array_append_item(list, attachedMessage(i, phone).copy());
    }
    return list;
  }

  /// Returns false, because the connection is over once the phone has been served.
  bool connect(const PropertyList& request) {
    const std::size_t index = request.number("DeviceID") - 1;
    if (index >= bench_.count() || !bench_.attach(index, stream_)) {
      result(badDevice);
      return false;
    }
    const auto port = ntohs(static_cast<std::uint16_t>(request.number("PortNumber")));
    const bool isKnown = port == lockdownPort || port == filesPort;
    if (result(isKnown ? 0 : refused)) {
      if (port == lockdownPort) serveLockdown(bench_, index, stream_);
      if (port == filesPort) serveFiles(bench_, index, stream_);
    }
    bench_.detach(index, stream_);
    return false;
  }

  Bench& bench_;
  Stream& stream_;
  std::uint32_t tag_ = 0;
};

FileDescriptor listeningSocket(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof address.sun_path) {
    throw FileError{FileOperation::open, path, ENAMETOOLONG};
  }
  std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
  FileDescriptor socket{::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)};
  ::unlink(path.c_str());
  if (::bind(socket.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
      ::listen(socket.number(), SOMAXCONN) != 0) {
    throw FileError{FileOperation::open, path, errno};
  }
  return socket;
}

}  // namespace

bool writeMuxMessage(Stream& stream, std::uint32_t tag, const PropertyList& message) {
  const std::string text = message.xml();
  MuxHead head;
  head.length = static_cast<std::uint32_t>(sizeof head + text.size());
  head.tag = tag;
  std::string bytes{reinterpret_cast<const char*>(&head), sizeof head};
  return stream.write(bytes + text);
}

PropertyList attachedMessage(std::size_t index, const SimulatedPhone& phone) {
  PropertyList properties;
  properties.set("ConnectionType", "USB").set("DeviceID", std::uint64_t{index + 1});
  properties.set("LocationID", std::uint64_t{1}).set("ProductID", std::uint64_t{0x12a8});
  properties.set("SerialNumber", phone.deviceID);
  PropertyList message;
  message.set("MessageType", "Attached").set("DeviceID", std::uint64_t{index + 1});
  return std::move(message.set("Properties", properties));
}

}  // namespace simulator

class PhoneSimulator::Server {
 public:
  Server(const std::string& path, std::vector<SimulatedPhone> phones)
      : bench(std::move(phones)),
        socket_(simulator::listeningSocket(path)),
        wake_(::eventfd(0, EFD_CLOEXEC)) {
    // Generates the keys before any program waits for an answer.
    simulator::Bench::keys();
    acceptor_ = std::thread{[this] { accept(); }};
  }

  ~Server() {
    const std::uint64_t one = 1;
    while (::write(wake_.number(), &one, sizeof one) < 0 && errno == EINTR) {
    }
    acceptor_.join();
    bench.close();
    for (Connection& connection : connections_) connection.stream.hangUp();
    for (Connection& connection : connections_) connection.thread.join();
  }

  simulator::Bench bench;
  std::atomic<bool> isRejecting{false};
  std::atomic<std::uint64_t> rejections{0};

 private:
  struct Connection {
    explicit Connection(FileDescriptor socket) : stream(std::move(socket)) {}
    simulator::Stream stream;
    std::atomic<bool> isOver{false};
    std::thread thread;
  };

  void accept() {
    simulator::ignoreBrokenPipes();
    pollfd waited[] = {{socket_.number(), POLLIN, 0}, {wake_.number(), POLLIN, 0}};
    while (::poll(waited, 2, -1) >= 0 || errno == EINTR) {
      if ((waited[1].revents & POLLIN) != 0) return;
      FileDescriptor socket{::accept4(socket_.number(), nullptr, nullptr, SOCK_CLOEXEC)};
      forgetOver();
      if (!socket.isOpen()) continue;
      if (isRejecting) {
        ++rejections;
      } else {
        begin(std::move(socket));
      }
    }
  }

  void begin(FileDescriptor socket) {
    Connection& connection = connections_.emplace_back(std::move(socket));
    connection.thread = std::thread{[this, &connection] {
      simulator::MuxConnection{bench, connection.stream}.serve();
      connection.stream.hangUp();
      connection.isOver = true;
    }};
  }

  void forgetOver() {
    connections_.remove_if([](Connection& connection) {
      if (!connection.isOver) return false;
      connection.thread.join();
      return true;
    });
  }

  FileDescriptor socket_;
  FileDescriptor wake_;
  std::list<Connection> connections_;
  std::thread acceptor_;
};

PhoneSimulator::PhoneSimulator(const std::string& socketPath, std::vector<SimulatedPhone> phones)
    : socketPath_(socketPath), server_(std::make_unique<Server>(socketPath, std::move(phones))) {}

PhoneSimulator::~PhoneSimulator() {
  ::unlink(socketPath_.c_str());
  server_.reset();
}

std::string PhoneSimulator::address() const { return "UNIX:" + socketPath_; }

void PhoneSimulator::change(std::size_t phone, const std::function<void(SimulatedPhone&)>& change) {
  server_->bench.change(phone, change);
}

SimulatedPhone PhoneSimulator::phone(std::size_t phone) const {
  return server_->bench.phone(phone);
}

std::uint64_t PhoneSimulator::fileCalls() const { return server_->bench.fileCalls; }

void PhoneSimulator::rejectConnections(bool isRejecting) { server_->isRejecting = isRejecting; }

std::uint64_t PhoneSimulator::rejections() const { return server_->rejections; }

std::uint64_t PhoneSimulator::refusals() const { return server_->bench.refusals; }

}  // namespace tavrix
