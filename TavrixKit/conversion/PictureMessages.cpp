#include "conversion/PictureMessages.h"

#include <initializer_list>

#include "device/metadata/Bytes.h"

namespace tavrix::PictureMessages {
namespace {

constexpr std::uint64_t picture = 0;
constexpr auto lastFailure = static_cast<std::uint64_t>(ConversionFailure::failed);

std::string numbers(std::initializer_list<std::uint64_t> values) {
  std::string bytes;
  for (const std::uint64_t value : values) {
    for (int shift = 24; shift >= 0; shift -= 8)
      bytes += static_cast<char>(value >> static_cast<unsigned>(shift));
  }
  return bytes;
}

std::uint32_t next(ByteCursor& cursor) { return static_cast<std::uint32_t>(cursor.number(4)); }

}  // namespace

std::string requestHead(const PictureRequest& request) {
  return numbers({request.bytes.size(), static_cast<std::uint64_t>(request.orientation),
                  request.fullWidth, request.fullHeight, request.longestSide});
}

PictureRequest requestOf(std::string_view head) {
  ByteCursor cursor{head};
  PictureRequest request;
  request.bytes.resize(next(cursor));
  request.orientation = static_cast<int>(next(cursor));
  request.fullWidth = next(cursor);
  request.fullHeight = next(cursor);
  request.longestSide = next(cursor);
  return request;
}

std::string replyHead(const ReplyHead& head) {
  const std::uint64_t state =
      head.failure ? 1 + static_cast<std::uint64_t>(*head.failure) : picture;
  return numbers({state, head.width, head.height, head.length});
}

std::optional<ReplyHead> readReplyHead(std::string_view bytes) {
  ByteCursor cursor{bytes};
  const std::uint64_t state = next(cursor);
  ReplyHead head{std::nullopt, next(cursor), next(cursor), next(cursor)};
  if (cursor.hasFailed() || !cursor.isAtEnd() || state > 1 + lastFailure) return std::nullopt;
  if (state != picture) head.failure = static_cast<ConversionFailure>(state - 1);
  const bool isEmpty = head.width == 0 && head.height == 0 && head.length == 0;
  const bool isPicture = head.width > 0 && head.height > 0 && head.length > 0;
  if (head.failure ? !isEmpty : !isPicture) return std::nullopt;
  return head;
}

}  // namespace tavrix::PictureMessages
