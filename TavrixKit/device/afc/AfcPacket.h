#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tavrix {

/// The service of a phone that provides its files (Apple File Conduit). Both sides send packets. A
/// packet is a head and a body. Numbers have eight bytes, least significant byte first; texts end
/// with a zero byte.
inline constexpr const char* afcServiceName = "com.apple.afc";

/// The kinds of packets that reading needs. A request is answered with the given kind, or with an
/// error as `status`.
enum class AfcOperation : std::uint64_t {
  status = 0x01,      ///< an answer; body: AfcStatus
  data = 0x02,        ///< an answer; body: bytes of a file, or texts
  readFolder = 0x03,  ///< path; data: names
  fileInfo = 0x0a,    ///< path; data: names of fields and their values in turn
  openFile = 0x0d,    ///< number afcReadOnly, path; openedFile
  openedFile = 0x0e,  ///< an answer; body: handle
  readFile = 0x0f,    ///< handle, number of bytes; data
  seekFile = 0x11,    ///< handle, afcFromBegin, offset; status
  closeFile = 0x14,   ///< handle; status
};

enum class AfcStatus : std::uint64_t {
  success = 0,
  unknownError = 1,
  noResources = 3,
  readError = 4,
  invalidArgument = 7,
  notFound = 8,
  isFolder = 9,
  denied = 10,
  notSupported = 15,
  busy = 17,
  ioError = 20,
  internalError = 23,
};

inline constexpr std::uint64_t afcReadOnly = 1;
inline constexpr std::uint64_t afcFromBegin = 0;

/// The head of a packet.
struct AfcHead {
  static constexpr std::size_t bytes = 40;

  AfcOperation operation = AfcOperation::status;
  std::uint64_t number = 0;           ///< of the request; its answer has the same
  std::uint64_t bodyLength = 0;       ///< bytes of parameters and data together
  std::uint64_t parameterLength = 0;  ///< bytes of the body that are parameters

  std::string encode() const;
  /// Returns nullopt if the bytes are not a head or their lengths contradict each other. The body
  /// may still be of any length, and the operation unknown.
  static std::optional<AfcHead> decode(std::span<const char, bytes> head);

  friend bool operator==(const AfcHead&, const AfcHead&) = default;
};

namespace AfcBody {

std::string ofNumber(std::uint64_t number);
std::string ofText(std::string_view text);
/// Returns number `index` of a body that begins with numbers. Returns nullopt if it has fewer.
std::optional<std::uint64_t> numberAt(std::string_view body, std::size_t index);
/// Returns the texts of a body; they refer to it. Returns nullopt if the last one does not end.
std::optional<std::vector<std::string_view>> textsIn(std::string_view body);

}  // namespace AfcBody

}  // namespace tavrix
