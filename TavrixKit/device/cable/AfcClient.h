#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "device/afc/AfcPacket.h"
#include "device/cable/Phones.h"
#include "foundation/files/FileError.h"

namespace tavrix {

/// A connection to a service of a phone: bytes in both directions.
class ServiceStream {
 public:
  virtual ~ServiceStream() = default;
  /// Returns true if all bytes were sent.
  virtual bool send(std::string_view bytes) = 0;
  /// Returns true if the whole buffer was filled. Otherwise its content is undefined.
  virtual bool receive(std::span<char> buffer) = 0;
};

/// Asks the file service of a phone. An answer is valid only if it arrives whole, is well-formed
/// and belongs to the request. After any other answer the connection is closed, because the bytes
/// that follow cannot be trusted. Every function throws FileError if the phone refuses the request,
/// and PhoneError (gone) if there is no valid answer or the connection was closed before.
class AfcClient {
 public:
  struct OpenFile {
    std::uint64_t handle = 0;
    std::string path;
  };

  explicit AfcClient(std::unique_ptr<ServiceStream> stream) : stream_(std::move(stream)) {}

  /// Returns the names of the entries of a folder, sorted.
  std::vector<std::string> names(const std::string& folder);
  FileStatus status(const std::string& path);
  OpenFile open(const std::string& path);
  /// Reads from the position in the file on, and moves it. Returns the number of bytes, which may
  /// be smaller than the buffer; 0 at the end of the file.
  std::size_t read(const OpenFile& file, std::span<char> buffer);
  void seek(const OpenFile& file, std::uint64_t offset);
  void close(const OpenFile& file);

 private:
  struct Request {
    AfcOperation operation;
    std::string parameters;
    AfcOperation answer;  ///< the kind of answer, unless the phone refuses
    FileOperation purpose;
    const std::string& path;
  };
  /// Receives the body of an answer, which has `length` bytes. Throws PhoneError (gone).
  using BodyReceiver = std::function<void(ServiceStream& stream, std::uint64_t length)>;

  /// Sends a request and receives the answer. `receiveBody` is not called for a status.
  void exchange(const Request& request, const BodyReceiver& receiveBody);
  std::string bodyOf(const Request& request);
  /// Returns the value. Closes the connection if an answer did not have one.
  template <typename Value>
  Value required(std::optional<Value> value);

  std::unique_ptr<ServiceStream> stream_;  ///< null once it was closed
  std::uint64_t lastNumber_ = 0;
};

}  // namespace tavrix
