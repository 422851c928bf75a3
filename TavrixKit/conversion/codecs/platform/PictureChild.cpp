#include "conversion/codecs/platform/PictureChild.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <new>
#include <span>
#include <variant>

#include "conversion/PictureDecoder.h"
#include "conversion/PictureMessages.h"
#include "conversion/codecs/Av.h"
#include "conversion/codecs/SmallImageMaker.h"
#include "conversion/codecs/platform/Confinement.h"
#include "transfer/MediaConverter.h"

namespace tavrix {
namespace {

constexpr int parent = 3;

/// Ends the process if the parent is gone.
void readAll(std::span<char> bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::read(parent, bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) ::_exit(0);
    bytes = bytes.subspan(static_cast<std::size_t>(count));
  }
}

void writeAll(std::span<const char> bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::write(parent, bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) ::_exit(0);
    bytes = bytes.subspan(static_cast<std::size_t>(count));
  }
}

using Outcome = std::variant<SmallImage, ConversionFailure>;

Outcome outcomeOf(PictureRequest& request) {
  try {
    return makeSmallImage(request);
  } catch (const ConversionError& error) {
    return error.failure();
  } catch (const std::bad_alloc&) {
    return ConversionFailure::tooMuchMemory;
  } catch (const std::exception&) {
    return ConversionFailure::damagedInput;
  }
}

void reply(const Outcome& outcome) {
  if (const auto* const failure = std::get_if<ConversionFailure>(&outcome))
    return writeAll(PictureMessages::replyHead({.failure = *failure}));
  const auto& image = std::get<SmallImage>(outcome);
  writeAll(PictureMessages::replyHead(
      {{}, image.width, image.height, static_cast<std::uint32_t>(image.jpeg.size())}));
  writeAll(image.jpeg);
}

}  // namespace

void runPictureChild(char** argv) {
  PictureLimits limits;
  limits.memoryBytes = std::strtoull(argv[2], nullptr, 10);
  limits.processorTime = std::chrono::seconds{std::strtoll(argv[3], nullptr, 10)};
  limits.lifetime = std::chrono::seconds{std::strtoll(argv[4], nullptr, 10)};
  const bool isConfined = confineProcess(limits);
  // The messages of the libraries are not for users.
  av_log_set_level(AV_LOG_QUIET);
  std::string head(PictureMessages::requestHeadBytes, '\0');
  for (;;) {
    readAll(head);
    PictureRequest request = PictureMessages::requestOf(head);
    readAll(request.bytes);
    const bool mayDecode = isConfined && grantProcessorTime(limits.processorTime);
    reply(mayDecode ? outcomeOf(request) : Outcome{ConversionFailure::failed});
  }
}

}  // namespace tavrix
