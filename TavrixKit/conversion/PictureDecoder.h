#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <stop_token>
#include <string>

#include "conversion/SmallImage.h"

namespace tavrix {

/// The limits of a process that decodes pictures, and of one picture.
struct PictureLimits {
  std::uint64_t memoryBytes = std::uint64_t{2} << 30U;  ///< address space of the process
  std::chrono::seconds processorTime{10};               ///< for one picture
  /// Processor time of one process for all its pictures; before it is used up, another is started.
  std::chrono::seconds lifetime{600};
  std::chrono::milliseconds patience{10'000};  ///< from the request to the end of the reply
  std::size_t requestBytes = std::size_t{64} << 20U;
  std::size_t replyBytes = std::size_t{16} << 20U;
  std::uint32_t longestSide = 4096;  ///< of a result, in pixels

  friend bool operator==(const PictureLimits&, const PictureLimits&) = default;
};

/// Decodes pictures in a confined process that stays alive: the program `tavrix-convert`, which has
/// a socket to its parent, no files and no network. It is started by prepare(), or with the first
/// picture. A hostile file that breaks or blocks the process costs only its own request.
///
/// Use it on one thread at a time; several decoders may work at once.
class PictureDecoder {
 public:
  /// `program` is the path of `tavrix-convert`.
  explicit PictureDecoder(std::string program, PictureLimits limits = {});
  ~PictureDecoder();
  PictureDecoder(const PictureDecoder&) = delete;
  PictureDecoder& operator=(const PictureDecoder&) = delete;

  /// Starts the process, unless it runs, and returns before it is ready. A failure shows at the
  /// first picture.
  void prepare() noexcept;
  /// Returns the picture, with sides of at most `longestSide` pixels. The JPEG file was checked to
  /// be complete and of that size. Throws ConversionError if it cannot be decoded, if the process
  /// dies or hangs (then the next call starts another), or if a stop is requested, which kills the
  /// process within half a second. A process that ended between two calls is replaced.
  SmallImage decode(const PictureRequest& request, std::stop_token stop);

 private:
  class Process;

  std::string program_;
  PictureLimits limits_;
  std::unique_ptr<Process> process_;
};

}  // namespace tavrix
