#pragma once

#include <cstdint>
#include <span>

#include "conversion/codecs/ByteSink.h"

namespace tavrix {

/// The bytes of an open file, mapped into memory. Changes to them are not written to the file.
class SourceMapping {
 public:
  /// Throws ConversionError for a file that is empty or longer than `maxBytes`.
  SourceMapping(int descriptor, std::uint64_t maxBytes);
  ~SourceMapping();
  SourceMapping(const SourceMapping&) = delete;
  SourceMapping& operator=(const SourceMapping&) = delete;

  std::span<char> bytes() const { return bytes_; }

 private:
  std::span<char> bytes_;
};

/// Writes to an open file. Throws FileError, without a path.
class DescriptorSink : public ByteSink {
 public:
  explicit DescriptorSink(int descriptor) : descriptor_(descriptor) {}
  void write(std::span<const std::byte> bytes) override;

 private:
  int descriptor_;
};

}  // namespace tavrix
