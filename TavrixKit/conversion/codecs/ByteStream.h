#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "conversion/codecs/Av.h"

namespace tavrix::av {

/// An open file, or one in memory, for the libraries to read or write. They get nothing else, so
/// that nothing in a film can lead to another file.
class ByteStream {
 public:
  enum class Purpose { reading, writing };

  ByteStream(int descriptor, Purpose purpose);
  /// Reads bytes, which must outlive the stream.
  explicit ByteStream(std::span<const char> bytes);
  ~ByteStream();
  ByteStream(const ByteStream&) = delete;
  ByteStream& operator=(const ByteStream&) = delete;

  AVIOContext* get() const { return context_; }
  /// Throws FileError if the system failed to read or write.
  void requireNoError() const;
  /// Returns the length in bytes; negative if it is not known.
  std::int64_t size() const;

 private:
  static int read(void* self, std::uint8_t* buffer, int count);
  static int write(void* self, std::uint8_t* bytes, int count);
  static std::int64_t seek(void* self, std::int64_t offset, int whence);
  void open();
  std::int64_t readPiece(std::span<char> buffer) const;
  int remember(std::int64_t result);

  int descriptor_ = -1;
  std::span<const char> bytes_;  ///< if there is no descriptor
  Purpose purpose_;
  std::int64_t position_ = 0;
  int error_ = 0;  ///< errno of the first failure
  AVIOContext* context_ = nullptr;
};

}  // namespace tavrix::av
