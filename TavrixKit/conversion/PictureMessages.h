#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "conversion/SmallImage.h"
#include "transfer/ConversionFailure.h"

namespace tavrix {

/// The messages between PictureDecoder and its process. Each is a head of big-endian numbers of
/// four bytes, and as many bytes after it as the head says: the file of a request, the JPEG of a
/// reply.
namespace PictureMessages {

inline constexpr std::size_t requestHeadBytes = 20;
inline constexpr std::size_t replyHeadBytes = 16;

std::string requestHead(const PictureRequest& request);

/// Returns the request with `bytes` in their length, still to be filled. The head must have
/// requestHeadBytes; the process trusts its parent.
PictureRequest requestOf(std::string_view head);

/// The head of a reply: either a failure or the size of a picture.
struct ReplyHead {
  std::optional<ConversionFailure> failure;
  std::uint32_t width = 0;  ///< in pixels, as `height`
  std::uint32_t height = 0;
  std::uint32_t length = 0;  ///< of the JPEG file, in bytes

  friend bool operator==(const ReplyHead&, const ReplyHead&) = default;
};

std::string replyHead(const ReplyHead& head);

/// Returns nullopt unless the head is one that replyHead() writes: a known failure without a
/// picture, or a picture whose sides and length are not 0.
std::optional<ReplyHead> readReplyHead(std::string_view bytes);

}  // namespace PictureMessages

}  // namespace tavrix
