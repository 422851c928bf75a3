#include "device/afc/AfcPacket.h"

namespace tavrix {
namespace {

constexpr std::string_view magic = "CFA6LPAA";
constexpr std::size_t numberBytes = sizeof(std::uint64_t);

}  // namespace

std::string AfcHead::encode() const {
  std::string head{magic};
  for (const std::uint64_t field : {bytes + bodyLength, bytes + parameterLength, number,
                                    static_cast<std::uint64_t>(operation)}) {
    head += AfcBody::ofNumber(field);
  }
  return head;
}

std::optional<AfcHead> AfcHead::decode(std::span<const char, bytes> head) {
  const std::string_view text{head.data(), head.size()};
  const auto field = [&](std::size_t index) { return *AfcBody::numberAt(text, 1 + index); };
  const std::uint64_t entireLength = field(0);
  const std::uint64_t thisLength = field(1);
  if (!text.starts_with(magic) || thisLength < bytes || entireLength < thisLength) {
    return std::nullopt;
  }
  return AfcHead{static_cast<AfcOperation>(field(3)), field(2), entireLength - bytes,
                 thisLength - bytes};
}

std::string AfcBody::ofNumber(std::uint64_t number) {
  std::string bytes;
  for (std::size_t i = 0; i < numberBytes; ++i) {
    bytes.push_back(static_cast<char>(number >> (8 * i) & 0xff));
  }
  return bytes;
}

std::string AfcBody::ofText(std::string_view text) { return std::string{text} + '\0'; }

std::optional<std::uint64_t> AfcBody::numberAt(std::string_view body, std::size_t index) {
  if (body.size() / numberBytes <= index) return std::nullopt;
  std::uint64_t number = 0;
  for (std::size_t i = numberBytes; i-- > 0;) {
    number = number << 8 | static_cast<unsigned char>(body[index * numberBytes + i]);
  }
  return number;
}

std::optional<std::vector<std::string_view>> AfcBody::textsIn(std::string_view body) {
  std::vector<std::string_view> texts;
  while (!body.empty()) {
    const std::size_t end = body.find('\0');
    if (end == std::string_view::npos) return std::nullopt;
    texts.push_back(body.substr(0, end));
    body.remove_prefix(end + 1);
  }
  return texts;
}

}  // namespace tavrix
