#include "cli/platform/Terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

namespace tavrix::cli {

std::optional<int> terminalColumns(StandardStream stream) {
  constexpr int usualColumns = 80;
  const int descriptor = stream == StandardStream::output ? STDOUT_FILENO : STDERR_FILENO;
  if (::isatty(descriptor) == 0) return std::nullopt;
  winsize size{};
  if (::ioctl(descriptor, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return usualColumns;
  return size.ws_col;
}

}  // namespace tavrix::cli
