#pragma once

#include <memory>
#include <utility>

namespace tavrix {

/// A value that is too large to copy and never changes: copies share it. Equal when the values are.
/// The value of a default one is a default T.
template <typename T>
class Shared {
 public:
  Shared() : value_(emptyValue()) {}
  // NOLINTNEXTLINE(google-explicit-constructor): a value is as good as a share in it.
  Shared(T value) : value_(std::make_shared<const T>(std::move(value))) {}
  explicit Shared(std::shared_ptr<const T> value) : value_(std::move(value)) {}

  const T& operator*() const { return *value_; }
  const T* operator->() const { return value_.get(); }
  const std::shared_ptr<const T>& pointer() const { return value_; }

  /// Whether both share one value, which costs nothing to find out.
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
