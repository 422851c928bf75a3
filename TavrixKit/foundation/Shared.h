#pragma once

#include <memory>
#include <utility>

namespace tavrix {

/// An immutable value that is too large to copy: copies share it. Two objects are equal if their
/// values are equal. A default-constructed object holds a default-constructed T.
template <typename T>
class Shared {
 public:
  Shared() : value_(emptyValue()) {}
  // NOLINTNEXTLINE(google-explicit-constructor): callers pass a plain value where it is shared.
  Shared(T value) : value_(std::make_shared<const T>(std::move(value))) {}
  explicit Shared(std::shared_ptr<const T> value) : value_(std::move(value)) {}

  const T& operator*() const { return *value_; }
  const T* operator->() const { return value_.get(); }
  const std::shared_ptr<const T>& pointer() const { return value_; }

  /// Returns true if both share the same value. Compares only pointers.
  friend bool isSame(const Shared& a, const Shared& b) { return a.value_ == b.value_; }
  friend bool operator==(const Shared& a, const Shared& b) {
    return a.value_ == b.value_ || *a == *b;
  }

 private:
  static const std::shared_ptr<const T>& emptyValue() {
    static const auto value = std::make_shared<const T>();
    return value;
  }

  std::shared_ptr<const T> value_;
};

}  // namespace tavrix
