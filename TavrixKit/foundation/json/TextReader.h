#pragma once

#include <string_view>

#include "foundation/json/JsonReader.h"

namespace tavrix {

/// A ByteReader of text in memory. The text must outlive the reader.
class TextReader : public ByteReader {
 public:
  explicit TextReader(std::string_view text) : rest_(text) {}

  std::size_t read(std::span<char> buffer) override {
    const std::size_t size = rest_.copy(buffer.data(), buffer.size());
    rest_.remove_prefix(size);
    return size;
  }

 private:
  std::string_view rest_;
};

}  // namespace tavrix
