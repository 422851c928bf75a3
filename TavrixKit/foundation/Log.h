#pragma once

#include <fmt/format.h>

#include <string>
#include <string_view>
#include <type_traits>

namespace tavrix {

/// A field of a log line that may reveal something about the user: a path, a name, an error text.
struct PrivateField {
  std::string_view text;
};

/// Receives one line per event. Implementations are safe to call from several threads.
class Log {
 public:
  virtual ~Log() = default;
  /// Returns true if private fields are written out. Otherwise "<private>" replaces them.
  virtual bool showsPrivateFields() const = 0;
  virtual void write(std::string_view line) = 0;
};

/// Returns a log that discards every line.
Log& silentLog();

namespace detail {
std::string shownText(const Log& log, PrivateField field);
template <typename T>
auto shownField(const Log& log, const T& value) {
  // NOLINTNEXTLINE(bugprone-branch-clone): overloads differ.
  if constexpr (std::is_same_v<T, PrivateField>) {
    return shownText(log, value);
  } else if constexpr (std::is_convertible_v<const T&, std::string_view>) {
    return std::string_view{value};
  } else {
    return value;
  }
}
}  // namespace detail

/// Writes one line. showsPrivateFields() decides whether private fields are shown or hidden. In a
/// shown one control characters are replaced, so that a name cannot forge a second line.
template <typename... Fields>
void writeLog(Log& log, std::string_view format, const Fields&... fields) {
  const auto line = [&](const auto&... shown) {
    return fmt::format(fmt::runtime(format), shown...);
  };
  log.write(line(detail::shownField(log, fields)...));
}

}  // namespace tavrix
