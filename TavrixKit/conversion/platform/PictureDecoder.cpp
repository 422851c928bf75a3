#include "conversion/PictureDecoder.h"

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <span>

#include "conversion/JpegFrame.h"
#include "conversion/PictureMessages.h"
#include "conversion/platform/ConfinedProcess.h"
#include "device/metadata/MemoryReader.h"
#include "foundation/files/platform/FileDescriptor.h"
#include "transfer/MediaConverter.h"

namespace tavrix {
namespace {

using SteadyTime = std::chrono::steady_clock::time_point;

/// The end of one request: its deadline, or a stop request.
struct Watch {
  SteadyTime deadline;
  std::stop_token stop;

  /// Throws ConversionError if the request is over.
  void requireTime() const {
    if (stop.stop_requested()) throw ConversionError{ConversionFailure::failed};
    if (std::chrono::steady_clock::now() > deadline)
      throw ConversionError{ConversionFailure::tooSlow};
  }
};

/// Waits until the socket is ready for `events` or closed.
void await(int socket, short events, const Watch& watch) {
  constexpr int millisecondsBetweenChecks = 50;
  for (;;) {
    watch.requireTime();
    pollfd waiting{socket, events, 0};
    if (::poll(&waiting, 1, millisecondsBetweenChecks) > 0) return;
  }
}

bool isTransient(int code) { return code == EINTR || code == EAGAIN; }

bool isJpegOf(const SmallImage& image) {
  MemoryReader file{image.jpeg};
  return readJpegFrame(file) == JpegFrame{image.width, image.height};
}

}  // namespace

/// The running program and the socket to it.
class PictureDecoder::Process {
 public:
  Process(const std::string& program, const PictureLimits& limits) : limits_(limits) {
    int ends[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
      throw ConversionError{ConversionFailure::failed};
    socket_ = FileDescriptor{ends[0]};
    const FileDescriptor itsEnd{ends[1]};
    const int descriptors[] = {itsEnd.number()};
    const std::vector<std::string> arguments{"pictures", std::to_string(limits.memoryBytes),
                                             std::to_string(limits.processorTime.count()),
                                             std::to_string(limits.lifetime.count())};
    process_.emplace(program, arguments, descriptors);
  }

  /// Returns true if the process is running, has said nothing unasked and has enough processor time
  /// left for another picture.
  bool isReady() {
    char byte = 0;
    const bool isSilent =
        ::recv(socket_.number(), &byte, 1, MSG_PEEK | MSG_DONTWAIT) < 0 && isTransient(errno);
    return isSilent && process_->isRunning() &&
           process_->processorTime() + 2 * limits_.processorTime < limits_.lifetime;
  }

  /// Returns the failure that the process reports, or nullopt with the picture in `image`. Throws
  /// if the process must not be used again.
  std::optional<ConversionFailure> decode(const PictureRequest& request, const Watch& watch,
                                          SmallImage& image) {
    send(PictureMessages::requestHead(request), watch);
    send(request.bytes, watch);
    std::string headBytes(PictureMessages::replyHeadBytes, '\0');
    receive(headBytes, watch);
    const auto head = PictureMessages::readReplyHead(headBytes);
    if (!head || head->length > limits_.replyBytes ||
        std::max(head->width, head->height) > request.longestSide)
      throw ConversionError{ConversionFailure::wrongResult};
    if (head->failure) return head->failure;
    image = {head->width, head->height, std::string(head->length, '\0')};
    receive(image.jpeg, watch);
    if (!isJpegOf(image)) throw ConversionError{ConversionFailure::wrongResult};
    return std::nullopt;
  }

 private:
  void send(std::string_view bytes, const Watch& watch) {
    while (!bytes.empty()) {
      await(socket_.number(), POLLOUT, watch);
      const ssize_t count =
          ::send(socket_.number(), bytes.data(), bytes.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
      if (count < 0 && isTransient(errno)) continue;
      if (count < 0) fail();
      bytes.remove_prefix(static_cast<std::size_t>(count));
    }
  }
  void receive(std::span<char> bytes, const Watch& watch) {
    while (!bytes.empty()) {
      await(socket_.number(), POLLIN, watch);
      const ssize_t count = ::recv(socket_.number(), bytes.data(), bytes.size(), MSG_DONTWAIT);
      if (count < 0 && isTransient(errno)) continue;
      if (count <= 0) fail();
      bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
  }
  /// Throws the reason why the process closed its end.
  [[noreturn]] void fail() {
    constexpr std::chrono::milliseconds patience{300};
    throw ConversionError{failureOf(process_->wait(patience))};
  }

  PictureLimits limits_;
  FileDescriptor socket_;
  std::optional<ConfinedProcess> process_;
};

PictureDecoder::PictureDecoder(std::string program, PictureLimits limits)
    : program_(std::move(program)), limits_(limits) {}
PictureDecoder::~PictureDecoder() = default;

void PictureDecoder::prepare() noexcept {
  if (process_) return;
  try {
    process_ = std::make_unique<Process>(program_, limits_);
  } catch (const std::exception&) {
    // decode() tries again and reports the failure.
  }
}

SmallImage PictureDecoder::decode(const PictureRequest& request, std::stop_token stop) {
  const bool isAllowed = request.longestSide > 0 && request.longestSide <= limits_.longestSide &&
                         request.bytes.size() <= limits_.requestBytes;
  if (!isAllowed) throw ConversionError{ConversionFailure::tooLarge};
  const Watch watch{std::chrono::steady_clock::now() + limits_.patience, std::move(stop)};
  watch.requireTime();
  if (process_ && !process_->isReady()) process_.reset();
  if (!process_) process_ = std::make_unique<Process>(program_, limits_);
  SmallImage image;
  std::optional<ConversionFailure> failure;
  try {
    failure = process_->decode(request, watch, image);
  } catch (...) {
    process_.reset();
    throw;
  }
  if (failure) throw ConversionError{*failure};
  return image;
}

}  // namespace tavrix
