#include "cli/printing/TerminalSink.h"

#include <algorithm>
#include <string>

#include "foundation/Text.h"

namespace tavrix::cli {

void TerminalSink::write(std::string_view text) {
  std::string shown;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of("\n\t"), text.size());
    shown += printable(text.substr(0, end));
    if (end < text.size()) shown += text[end];
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  terminal_.write(shown);
}

}  // namespace tavrix::cli
