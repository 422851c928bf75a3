#include "conversion/codecs/ByteStream.h"

#include <cstdio>
#include <new>

#include "conversion/platform/Descriptors.h"
#include "device/metadata/MemoryReader.h"
#include "foundation/files/FileError.h"

namespace tavrix::av {

ByteStream::ByteStream(int descriptor, Purpose purpose)
    : descriptor_(descriptor), purpose_(purpose) {
  open();
}

ByteStream::ByteStream(std::span<const char> bytes) : bytes_(bytes), purpose_(Purpose::reading) {
  open();
}

void ByteStream::open() {
  constexpr int bufferBytes = 256 * 1024;
  const bool isWriting = purpose_ == Purpose::writing;
  auto* const buffer = static_cast<unsigned char*>(av_malloc(bufferBytes));
  if (buffer == nullptr) throw std::bad_alloc{};
  context_ = avio_alloc_context(buffer, bufferBytes, isWriting ? 1 : 0, this,
                                isWriting ? nullptr : &ByteStream::read,
                                isWriting ? &ByteStream::write : nullptr, &ByteStream::seek);
  if (context_ == nullptr) {
    av_free(buffer);
    throw std::bad_alloc{};
  }
}

ByteStream::~ByteStream() {
  av_freep(&context_->buffer);
  avio_context_free(&context_);
}

void ByteStream::requireNoError() const {
  if (error_ == 0) return;
  const bool isWriting = purpose_ == Purpose::writing;
  throw FileError{isWriting ? FileOperation::write : FileOperation::read, {}, error_};
}

std::int64_t ByteStream::size() const {
  return descriptor_ >= 0 ? descriptors::size(descriptor_)
                          : static_cast<std::int64_t>(bytes_.size());
}

std::int64_t ByteStream::readPiece(std::span<char> buffer) const {
  const auto offset = static_cast<std::uint64_t>(position_);
  if (descriptor_ >= 0) return descriptors::readAt(descriptor_, offset, buffer);
  return static_cast<std::int64_t>(MemoryReader{bytes_}.read(offset, buffer));
}

int ByteStream::remember(std::int64_t result) {
  if (result < 0 && error_ == 0) error_ = static_cast<int>(-result);
  return static_cast<int>(result);
}

int ByteStream::read(void* self, std::uint8_t* buffer, int count) {
  auto& stream = *static_cast<ByteStream*>(self);
  const int result = stream.remember(
      stream.readPiece({reinterpret_cast<char*>(buffer), static_cast<std::size_t>(count)}));
  if (result == 0) return AVERROR_EOF;
  if (result > 0) stream.position_ += result;
  return result;
}

int ByteStream::write(void* self, std::uint8_t* bytes, int count) {
  auto& stream = *static_cast<ByteStream*>(self);
  const int result = stream.remember(descriptors::writeAt(
      stream.descriptor_, static_cast<std::uint64_t>(stream.position_),
      {reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(count)}));
  if (result > 0) stream.position_ += result;
  return result;
}

std::int64_t ByteStream::seek(void* self, std::int64_t offset, int whence) {
  auto& stream = *static_cast<ByteStream*>(self);
  std::int64_t base = 0;
  switch (whence & ~AVSEEK_FORCE) {
    case AVSEEK_SIZE:
      return stream.size();
    case SEEK_SET:
      break;
    case SEEK_CUR:
      base = stream.position_;
      break;
    case SEEK_END:
      base = stream.size();
      break;
    default:
      return AVERROR(EINVAL);
  }
  if (base < 0) return base;
  if (offset < 0 ? base + offset < 0 : offset > INT64_MAX - base) return AVERROR(EINVAL);
  return stream.position_ = base + offset;
}

}  // namespace tavrix::av
