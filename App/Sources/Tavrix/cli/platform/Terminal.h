#pragma once

#include <optional>

namespace tavrix::cli {

enum class StandardStream { output, error };

/// The columns of the terminal behind a stream; nothing when it goes somewhere else. A terminal
/// that does not tell its width has 80.
std::optional<int> terminalColumns(StandardStream stream);

}  // namespace tavrix::cli
