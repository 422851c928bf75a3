#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <utility>

namespace tavrix {

/// Receives the bytes of a result piece by piece. write() may throw FileError.
class ByteSink {
 public:
  virtual ~ByteSink() = default;
  virtual void write(std::span<const std::byte> bytes) = 0;
};

/// Collects the bytes in memory.
class StringSink : public ByteSink {
 public:
  void write(std::span<const std::byte> bytes) override {
    bytes_.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  }
  std::string take() { return std::move(bytes_); }

 private:
  std::string bytes_;
};

}  // namespace tavrix
