#pragma once

#include <unistd.h>

#include <utility>

namespace tavrix {

/// Owns an open file descriptor.
class FileDescriptor {
 public:
  FileDescriptor() = default;
  explicit FileDescriptor(int number) : number_(number) {}
  ~FileDescriptor() { reset(); }
  FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    if (this != &other) {
      reset();
      number_ = std::exchange(other.number_, -1);
    }
    return *this;
  }

  int number() const { return number_; }
  bool isOpen() const { return number_ >= 0; }
  /// Gives up ownership of the descriptor, for a caller that needs the result of close.
  int release() { return std::exchange(number_, -1); }

 private:
  void reset() {
    if (number_ >= 0) ::close(number_);
    number_ = -1;
  }

  int number_ = -1;
};

}  // namespace tavrix
